# SPDX-License-Identifier: GPL-3.0-or-later
# What ships and where. The application looks for its companions beside its executable, so they stay together
# in one folder: the installation folder itself on Windows, lib/quorvel with a link in bin on Linux.
include(GNUInstallDirs)
# Named after the package, not after the project.
set(CMAKE_INSTALL_DOCDIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/quorvel")

if(WIN32)
    set(QUORVEL_HOME ".")
else()
    set(QUORVEL_HOME "${CMAKE_INSTALL_LIBDIR}/quorvel")
endif()

install(TARGETS quorvel quorvel-cli RUNTIME DESTINATION "${QUORVEL_HOME}")
install(FILES "${PROJECT_SOURCE_DIR}/pack/Quorvel.ini" DESTINATION "${QUORVEL_HOME}/pack")
install(FILES "${PROJECT_SOURCE_DIR}/docs/settings.md" "${PROJECT_SOURCE_DIR}/docs/recordings.md"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# The manual, when its target was built before.
install(DIRECTORY "${QUORVEL_MANUAL}/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/manual" OPTIONAL)
install(FILES "${PROJECT_SOURCE_DIR}/plugins/sunxi-tools/README.md"
        DESTINATION "${QUORVEL_HOME}/plugins/sunxi-tools")
install(FILES "${PROJECT_SOURCE_DIR}/fonts/NOTICE" DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME NOTICE.font)

if(WIN32)
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    install(
        FILES "${PROJECT_SOURCE_DIR}/FELdrivers/quorvel-fel-winusb.inf"
              "${PROJECT_SOURCE_DIR}/FELdrivers/install-fel-winusb-driver.ps1"
              "${PROJECT_SOURCE_DIR}/FELdrivers/uninstall-fel-winusb-driver.ps1"
        DESTINATION "${QUORVEL_HOME}/FELdrivers")
    # The flash tool is built elsewhere; a package without it cannot upgrade the controller.
    file(GLOB quorvel_flash_tool "${PROJECT_SOURCE_DIR}/plugins/sunxi-tools/*.exe"
         "${PROJECT_SOURCE_DIR}/plugins/sunxi-tools/*.dll")
    install(PROGRAMS ${quorvel_flash_tool} DESTINATION "${QUORVEL_HOME}/plugins/sunxi-tools")
else()
    set(linux_files "${PROJECT_SOURCE_DIR}/packaging/linux")
    install(
        CODE "file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
foreach(program quorvel quorvel-cli)
    file(CREATE_LINK \"../${QUORVEL_HOME}/\${program}\"
         \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/\${program}\" SYMBOLIC)
endforeach()")
    install(FILES "${PROJECT_SOURCE_DIR}/docs/man/quorvel-cli.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${linux_files}/completions/quorvel-cli"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    # The licence's own text is part of the system; what applies to which file is said here.
    install(FILES "${linux_files}/debian/copyright" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    # udev reads rules from lib only, whatever the libraries' folder is called.
    install(FILES "${linux_files}/70-quorvel.rules" DESTINATION lib/udev/rules.d)
    install(FILES "${linux_files}/org.quorvel.Quorvel.desktop"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${linux_files}/org.quorvel.Quorvel.metainfo.xml"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES "${PROJECT_SOURCE_DIR}/res/quorvel-icon.svg"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" RENAME org.quorvel.Quorvel.svg)
endif()

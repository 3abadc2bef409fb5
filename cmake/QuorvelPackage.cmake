# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package: "cpack" in a build folder of the release preset.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvel)
set(CPACK_PACKAGE_VENDOR "Quorvel contributors")
set(CPACK_PACKAGE_CONTACT "Quorvel contributors <quorvel@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "readings of a USB power meter, charging analyser and multimeter")
set(CPACK_PACKAGE_DESCRIPTION
    "Quorvel is the desktop host of a small USB measurement instrument. It shows
voltage, current, power, charge and time of the instrument's main supply on
a needle gauge, the lines of a USB Type-C charger, the multimeter with a
table of recorded readings, and a live chart whose curves can be saved. It
also upgrades the firmware of the instrument's controller.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries are found by dpkg-shlibdeps; what is loaded by name at run time is not.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(
    JOIN
    ", "
    CPACK_DEBIAN_PACKAGE_DEPENDS
    libqt5svg5
    qml-module-qt-labs-platform
    qml-module-qtcharts
    qml-module-qtgraphicaleffects
    qml-module-qtquick-controls
    qml-module-qtquick-controls2
    qml-module-qtquick-layouts
    qml-module-qtquick-templates2
    qml-module-qtquick-window2
    qml-module-qtquick2)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qtwayland5, sunxi-tools, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/linux/debian/postinst"
                                       "${PROJECT_SOURCE_DIR}/packaging/linux/debian/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# A package holds the program alone: it waits for no test, tool or benchmark.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

include(CPack)

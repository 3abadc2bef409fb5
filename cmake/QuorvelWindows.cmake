# SPDX-License-Identifier: GPL-3.0-or-later
# What a shipped program for Windows carries beside its code.

# quorvel_add_windows_resources(<target> <description>): icon, manifest and version of the program <target>.
function(quorvel_add_windows_resources target description)
    if(NOT WIN32)
        return()
    endif()
    get_target_property(file_name ${target} OUTPUT_NAME)
    if(NOT file_name)
        set(file_name ${target})
    endif()
    set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    configure_file("${PROJECT_SOURCE_DIR}/res/quorvel.rc.in" "${resources}" @ONLY)
    target_sources(${target} PRIVATE "${resources}")
    set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS
                                                          "${PROJECT_SOURCE_DIR}/res/quorvel.manifest")
endfunction()

if(WIN32)
    enable_language(RC)
    # The time of the link would make two builds of the same sources differ.
    if(MINGW)
        add_link_options(-Wl,--no-insert-timestamp)
    endif()
endif()

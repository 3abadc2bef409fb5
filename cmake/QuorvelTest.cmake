# SPDX-License-Identifier: GPL-3.0-or-later

# quorvel_add_unit_test(<name> SOURCES <file>... [LIBRARIES <target>...] [LAYER <library>] [LAUNCHER <program>]): one Qt
# Test program, run by CTest without a display, under the launcher when there is one. It links quorvel_<library>,
# by default quorvel_core. Every test gets a home folder
# of its own from tests/support.
function(quorvel_add_unit_test name)
    cmake_parse_arguments(ARG "" "LAUNCHER;LAYER" "SOURCES;LIBRARIES" ${ARGN})
    if(NOT ARG_LAYER)
        set(ARG_LAYER core)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    quorvel_configure(${name})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    # Libraries named by the test come first: a fake that defines a library's functions wins over it.
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} quorvel_test_support quorvel_${ARG_LAYER}
                                          Qt5::Test)
    add_test(NAME ${name} COMMAND ${ARG_LAUNCHER} $<TARGET_FILE:${name}>)
    # A launcher may preload a library, in front of which the address sanitizer wants to be.
    set(environment QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=verify_asan_link_order=0
                    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" LABELS unit TIMEOUT 300)
endfunction()

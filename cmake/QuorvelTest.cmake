# SPDX-License-Identifier: GPL-3.0-or-later

# quorvel_add_unit_test(<name> SOURCES <file>... [LIBRARIES <target>...] [LAYER <library>] [LAUNCHER <program>]
# [WITHOUT_LEAK_CHECK]): one Qt Test program, run by CTest without a display, under the launcher when there is one. It
# links quorvel_<library>, by default quorvel_core. Every test gets a home folder of its own from tests/support. A test
# that refuses threads or gives up a child on purpose runs without the leak check.
function(quorvel_add_unit_test name)
    cmake_parse_arguments(ARG "WITHOUT_LEAK_CHECK" "LAUNCHER;LAYER" "SOURCES;LIBRARIES" ${ARGN})
    if(NOT ARG_LAYER)
        set(ARG_LAYER core)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    quorvel_configure(${name})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    # Libraries named by the test come first: a fake that defines a library's functions wins over it.
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} quorvel_test_support quorvel_${ARG_LAYER}
                                          Qt5::Test)
    # A target's name lets the toolchain put its emulator in front.
    if(ARG_LAUNCHER)
        add_test(NAME ${name} COMMAND ${ARG_LAUNCHER} $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    # A launcher may preload a library, in front of which the address sanitizer wants to be.
    set(asan_options verify_asan_link_order=0)
    if(ARG_WITHOUT_LEAK_CHECK)
        string(APPEND asan_options ":detect_leaks=0")
    endif()
    set(environment QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=${asan_options}
                    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" LABELS unit TIMEOUT 300)
endfunction()

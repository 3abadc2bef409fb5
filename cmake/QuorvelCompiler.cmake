# SPDX-License-Identifier: GPL-3.0-or-later
# Language level, warnings, sanitizers, the compiler cache and the linker: one place for every target.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# Every test program links the whole core: a fast linker saves most of a rebuild's time.
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM AND NOT WIN32)
    add_link_options(-fuse-ld=mold)
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# What ships holds no path of the machine that built it: two builds of the same sources are equal.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(-ffile-prefix-map=${PROJECT_BINARY_DIR}=build
                        -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()

# quorvel_configure(<target>): the warnings and definitions that every target of this project shares.
function(quorvel_configure target)
    target_compile_definitions(
        ${target}
        PRIVATE QT_DEPRECATED_WARNINGS
                QT_DISABLE_DEPRECATED_BEFORE=0x050C00
                QT_NO_CAST_TO_ASCII
                QT_NO_FOREACH
                QT_NO_KEYWORDS
                QT_NO_URL_CAST_FROM_STRING)
    target_compile_options(
        ${target}
        PRIVATE -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                -Wcast-align
                -Wimplicit-fallthrough)
    if(QUORVEL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# quorvel_add_library(<layer> SOURCES <file>... [LIBRARIES <target>...]): the static library quorvel_<layer>. It
# may include what its libraries hold and nothing else of this project; scripts/check-includes holds it.
function(quorvel_add_library layer)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(quorvel_${layer} STATIC ${ARG_SOURCES})
    quorvel_configure(quorvel_${layer})
    set_target_properties(quorvel_${layer} PROPERTIES AUTOMOC ON)
    target_include_directories(quorvel_${layer} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_link_libraries(quorvel_${layer} PUBLIC Qt5::Core ${ARG_LIBRARIES})
endfunction()

if(QUORVEL_SANITIZE)
    add_compile_options(-fsanitize=${QUORVEL_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUORVEL_SANITIZE})
endif()

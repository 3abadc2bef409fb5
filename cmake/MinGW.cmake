# SPDX-License-Identifier: GPL-3.0-or-later
# Toolchain for Windows x86-64: Debian's MinGW-w64 against the folder that scripts/windows-root fills with Qt, hidapi
# and the other libraries. QUORVEL_WINDOWS_ROOT names the folder.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(QUORVEL_WINDOWS_ROOT "$ENV{QUORVEL_WINDOWS_ROOT}" CACHE PATH "The folder that scripts/windows-root fills")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUORVEL_WINDOWS_ROOT)
if(NOT IS_DIRECTORY "${QUORVEL_WINDOWS_ROOT}/qt5-mingw")
    message(FATAL_ERROR "QUORVEL_WINDOWS_ROOT must name the folder that scripts/windows-root prints")
endif()
set(CMAKE_FIND_ROOT_PATH "${QUORVEL_WINDOWS_ROOT}/qt5-mingw" "${QUORVEL_WINDOWS_ROOT}/libraries"
                         /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH "${QUORVEL_WINDOWS_ROOT}/qt5-mingw")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# lrelease and lupdate write the same files on every system: the ones of this system serve.
set(Qt5LinguistTools_DIR /usr/lib/x86_64-linux-gnu/cmake/Qt5LinguistTools CACHE PATH "Qt's translation tools")
# Tests run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/run-wine-test")
set(ENV{PKG_CONFIG_LIBDIR} "${QUORVEL_WINDOWS_ROOT}/libraries/lib/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "")

# shellcheck shell=bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Sourced by scripts that run Windows programs: a Wine of their own, which sees no folder of the user.

# start_wine FOLDER: makes the prefix FOLDER/prefix with the home folder FOLDER/home, to which Documents and Desktop
# point, and sets the environment for programs in it. Programs of the build folder find their libraries; installed ones
# must bring their own, after only_installed_libraries. QUORVEL_WINDOWS_ROOT is set.
start_wine()
{
    local folder=$1 libraries=$QUORVEL_WINDOWS_ROOT compiler
    compiler=$(dirname "$(x86_64-w64-mingw32-gcc-posix -print-libgcc-file-name)")
    mkdir -p "$folder/home"
    # Wine refuses a home folder of somebody else, as root has under sudo.
    export HOME=$folder/home WINEPREFIX=$folder/prefix WINEARCH=win64 WINEDEBUG=-all,err+module
    unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME
    # File names of every language.
    export LC_ALL=C.UTF-8
    # No questions about Mono and Gecko, no entries in the desktop's menus.
    export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
    WINEPATH="$(windows_path "$libraries/qt5-mingw/bin");$(windows_path "$libraries/libraries/bin")"
    WINEPATH="$WINEPATH;$(windows_path "$compiler");$(windows_path /usr/x86_64-w64-mingw32/lib)"
    WINEQT_PLUGIN_PATH=$(windows_path "$libraries/qt5-mingw/plugins")
    QML2_IMPORT_PATH=$(windows_path "$libraries/qt5-mingw/qml")
    export WINEPATH WINEQT_PLUGIN_PATH QML2_IMPORT_PATH
    # Wine hides variables that begin with QT_ and gives those that begin with WINEQT_ their names. OpenGL hangs there.
    export WINEQT_QPA_PLATFORM=offscreen WINEQT_QUICK_BACKEND=software
    wineboot --init >/dev/null 2>&1
    wineserver --wait
}

only_installed_libraries()
{
    unset WINEPATH WINEQT_PLUGIN_PATH QML2_IMPORT_PATH
}

# The path of the file $1 of this system as Windows programs name it.
windows_path()
{
    local path=Z:$1
    printf '%s' "${path//\//\\}"
}

# stop_wine FOLDER: ends every program of the prefix in it, and waits for that.
stop_wine()
{
    [ -d "$1/prefix" ] || return 0
    WINEPREFIX=$1/prefix wineserver --kill || true
    WINEPREFIX=$1/prefix wineserver --wait || true
}

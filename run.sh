#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Installs what is missing, builds the release and starts Quorvel on live readings: on the instrument
# when one is plugged in, else on a virtual one, with a local server and a flash tool that only pretends.
#
#   ./run.sh                   the application; without a display, a picture of every page
#   ./run.sh --virtual         the virtual instrument even if a real one is plugged in
#   ./run.sh --scenario NAME   what the virtual instrument plays (bench, faults, tour, a file, ...)
#   ./run.sh --scenario boot-mode   its controller in the boot mode, for a firmware upgrade; the flash tool
#                              fails half-way with QUORVEL_FLASH_FAIL_AT=50 in front
#   ./run.sh --tour            every page and dialog in both languages, in pictures; needs no display
set -euo pipefail
cd "$(dirname "$0")"
. scripts/steps.sh

readonly instrument_vendor=0483 instrument_product=5750
readonly build=build/release

# Whether the instrument is on the USB bus.
instrument_present()
{
    local device
    for device in /sys/bus/usb/devices/*; do
        if [ -r "$device/idVendor" ] && [ "$(<"$device/idVendor")" = "$instrument_vendor" ] &&
            [ "$(<"$device/idProduct")" = "$instrument_product" ]; then
            return 0
        fi
    done
    return 1
}

# Starts the local server in the background; it ends with this script.
start_local_server()
{
    local log=$build/local-server.log
    # The server shows the manual as soon as it is made; without Sphinx it says how to make it.
    if command -v sphinx-build >/dev/null; then
        nice cmake --build "$build" --target manual </dev/null >"$build/manual.log" 2>&1 &
    fi
    # What an earlier one said must not pass for the first words of this one.
    : >"$log"
    "$build/tools/local-server" </dev/null >"$log" 2>&1 &
    server_pid=$!
    for _ in {1..50}; do
        [ ! -s "$log" ] || break
        sleep 0.1
    done
    if kill -0 "$server_pid" 2>/dev/null; then
        sed 's/^/Local server: /' "$log"
    else
        # Most likely another one serves already, which does as well.
        echo "No local server of our own: $(<"$log")"
    fi
}

server_pid=
stop_local_server()
{
    if [ -n "$server_pid" ]; then
        kill "$server_pid" 2>/dev/null || true
        wait "$server_pid" 2>/dev/null || true
    fi
}

tour=no
virtual=no
scenario=bench
while [ $# -gt 0 ]; do
    case $1 in
    --virtual) virtual=yes ;;
    --tour) tour=yes ;;
    --scenario)
        virtual=yes
        scenario=${2:?run.sh: --scenario needs a name}
        shift
        ;;
    -h | --help)
        sed -n '4,12s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    *)
        echo "run.sh: unknown option: $1 (see --help)" >&2
        exit 2
        ;;
    esac
    shift
done

scripts/install-packages build run
configure_and_build release quorvel virtual-instrument local_server flash_stand_in

if [ "$tour" = yes ]; then
    scripts/tour --build "$build" --out screenshots/tour
    echo "Screenshots: $PWD/screenshots/tour"
    exit 0
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display: Quorvel visits its pages under Xvfb on a virtual instrument ($scenario)."
    trap stop_local_server EXIT
    start_local_server
    scripts/screenshots --build "$build" --out screenshots --scenario "$scenario"
    echo "Readings were on the screen. Screenshots: $PWD/screenshots"
    exit 0
fi

if [ "$virtual" = no ] && instrument_present; then
    echo "Instrument $instrument_vendor:$instrument_product found: Quorvel shows its readings."
    exec "$build/quorvel"
fi

echo "No instrument $instrument_vendor:$instrument_product in use: Quorvel shows a virtual one ($scenario)."
trap stop_local_server EXIT
start_local_server
PATH="$PWD/$build/tools/flash-stand-in:$PATH" \
    "$build/tools/virtual-instrument" --scenario "$scenario" -- "$build/quorvel"

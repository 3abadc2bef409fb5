# shellcheck shell=bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Sourced by the scripts that consist of steps: run.sh, test.sh, .ci/run.

# step TITLE COMMAND...: runs the command, or a function of the script, with its output in a log, and prints its time.
# A failure prints the end of the output and ends the script with the command's code.
step()
{
    local title=$1 log code errexit=+e started=$SECONDS
    shift
    log=$(mktemp)
    printf '%s ... ' "$title"
    # The step runs in its own shell and outside any condition. Otherwise a function would not stop at its first error.
    [[ $- != *e* ]] || errexit=-e
    set +e
    (
        set -e
        "$@"
    ) >"$log" 2>&1
    code=$?
    set "$errexit"
    if [ "$code" = 0 ]; then
        printf '%d s\n' $((SECONDS - started))
        rm -f "$log"
        return 0
    fi
    printf 'failed (exit code %d)\n' "$code"
    grep -E -A 5 'error:|FAILED:|CMake Error' "$log" | head -n 60 || true
    echo "--- end of the output:"
    tail -n 30 "$log"
    rm -f "$log"
    exit "$code"
}

# Configures the preset $1 and builds the targets that follow (all when there are none).
configure_and_build()
{
    local preset=$1
    shift
    step "Configure ($preset)" cmake --preset "$preset"
    step "Build ($preset)" cmake --build --preset "$preset" ${1:+--target "$@"}
}

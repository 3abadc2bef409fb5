#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Installs what is missing, builds everything and runs every test. Arguments go to ctest:
#
#   ./test.sh                 everything
#   ./test.sh -R Settings     only the tests whose name matches
#   ./test.sh -L system       only the tests in a real window
#
# QUORVEL_PRESET=ci-dev builds another preset than "dev".
set -euo pipefail
cd "$(dirname "$0")"
. scripts/steps.sh

preset=${QUORVEL_PRESET:-dev}
scripts/install-packages build run test
configure_and_build "$preset"
exec ctest --test-dir "build/$preset" --output-on-failure --no-tests=error --parallel "$(nproc)" "$@"

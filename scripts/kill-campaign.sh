#!/usr/bin/env bash
# Builds the kill campaign into ./build (set BUILD_DIR to change it) and runs
# it: the commands used most on a fifteen-year calendar, each forked and
# killed with SIGKILL, [kills] times in all (200 by default), half at a random
# moment and half just before a random file change. A second argument fixes
# the random seed, which the campaign prints, so a failing run can be replayed.
# The last line reads "kills=<n> half=<n> unsound=<n> stray=<n>"; the script
# fails when any of the last three is not 0.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$root/build}"
"$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"$(nproc)" --target kill_campaign
export TZ=UTC LC_ALL=C.UTF-8
exec "$build/tests/kill_campaign" "${1:-200}" ${2:+"$2"}

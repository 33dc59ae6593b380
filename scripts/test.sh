#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest.
# Widget tests draw offscreen, so no display is needed.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
cd "${BUILD_DIR:-$root/build}"
export QT_QPA_PLATFORM=offscreen
ctest --output-on-failure -j"$(nproc)"

#!/usr/bin/env bash
# Installs what is missing, builds, and starts OrvaCal.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
exec "${BUILD_DIR:-$root/build}/src/orvacal" "$@"

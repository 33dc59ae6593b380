#!/usr/bin/env bash
# Builds OrvaCal into its own folder (./build-asan, or SANITIZE_DIR) with
# AddressSanitizer and UndefinedBehaviorSanitizer, and runs every test there.
# Any report fails the run: undefined behaviour aborts, and so does a leak of
# our own (scripts/lsan.supp names the libraries whose own caches are not ours
# to free).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${SANITIZE_DIR:-$root/build-asan}"
"$root/scripts/install-deps.sh"
flags="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DORVACAL_BENCH=OFF \
    -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
    -DCMAKE_SHARED_LINKER_FLAGS="$flags" >/dev/null
cmake --build "$build" -j"$(nproc)"
cd "$build"
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp:print_suppressions=0"
ctest --output-on-failure -j"$(nproc)"

#!/usr/bin/env bash
# Builds the libFuzzer targets of tests/fuzz with clang into their own folder
# (./build-fuzz, or FUZZ_DIR), apart from the normal build, and runs each for
# the given seconds (default 600), starting from the seed inputs that ship in
# tests/fuzz/corpus/<target>. Prints one summary line per target and a last
# line with the totals; any crash, leak, timeout or out-of-memory is a finding,
# keeps its input under build-fuzz/findings/<target>/ and fails the run.
#
#   scripts/fuzz.sh [seconds]
#
# FUZZ_JOBS=2 runs two targets at a time (default one); FUZZ_TARGETS narrows
# the list; FUZZ_TIMEOUT is the seconds one input may take (default 25).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds="${1:-600}"
build="${FUZZ_DIR:-$root/build-fuzz}"
jobs="${FUZZ_JOBS:-1}"
timeout="${FUZZ_TIMEOUT:-25}"
targets=(${FUZZ_TARGETS:-fuzz_member_lines fuzz_options_row fuzz_grid_file fuzz_calendar_open})

"$root/scripts/install-deps.sh"
# The compiler and libFuzzer's runtime; the normal build does not need them.
missing=()
for p in clang-14 libclang-rt-14-dev; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update
  "${sudo_cmd[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
fi

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
    -DORVACAL_FUZZ=ON -DORVACAL_TESTS=OFF -DORVACAL_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}"

# The targets write calendars for every input: a folder in memory keeps the
# disk's syncs out of the run. Removed at the end, whatever happens.
scratch_root=/tmp
if [ -d /dev/shm ] && [ -w /dev/shm ]; then scratch_root=/dev/shm; fi
scratch="$(mktemp -d "$scratch_root/orvacal-fuzz.XXXXXX")"
trap 'rm -rf "$scratch"' EXIT

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp:print_suppressions=0"
export QT_QPA_PLATFORM=offscreen TZ=UTC LC_ALL=C.UTF-8

run_target() {
  local t="$1"
  local corpus="$build/corpus/$t" findings="$build/findings/$t" log="$build/logs/$t.log"
  local seeds="$root/tests/fuzz/corpus/${t#fuzz_}"
  local dict="$root/tests/fuzz/dict/${t#fuzz_}.dict"
  mkdir -p "$corpus" "$findings" "$(dirname "$log")" "$scratch/$t"
  local args=(-max_total_time="$seconds" -timeout="$timeout" -rss_limit_mb=2048
              -print_final_stats=1 -artifact_prefix="$findings/")
  if [ -f "$dict" ]; then args+=(-dict="$dict"); fi
  local before rc=0
  before="$(find "$findings" -type f | wc -l)"
  TMPDIR="$scratch/$t" "$build/tests/fuzz/$t" "${args[@]}" "$corpus" "$seeds" >"$log" 2>&1 || rc=$?
  local inputs found kept
  inputs="$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)"
  found=$(( $(find "$findings" -type f | wc -l) - before ))
  # A run that stopped with an error but left no input behind is still one.
  if [ "$rc" -ne 0 ] && [ "$found" -eq 0 ]; then found=1; fi
  kept="$(find "$corpus" -type f | wc -l)"
  echo "$t ${inputs:-0} $found" >"$build/logs/$t.result"
  local where=""
  if [ "$found" -gt 0 ]; then where=" kept=$findings log=$log"; fi
  echo "fuzz target=$t seconds=$seconds inputs=${inputs:-0} corpus=$kept findings=$found$where"
}

pids=()
for t in "${targets[@]}"; do
  run_target "$t" &
  pids+=($!)
  if [ "${#pids[@]}" -ge "$jobs" ]; then
    wait "${pids[0]}" || true
    pids=("${pids[@]:1}")
  fi
done
for p in "${pids[@]}"; do wait "$p" || true; done

total_inputs=0
total_findings=0
for t in "${targets[@]}"; do
  read -r _ inputs found <"$build/logs/$t.result"
  total_inputs=$((total_inputs + inputs))
  total_findings=$((total_findings + found))
done
echo "fuzz seconds=$seconds targets=${#targets[@]} inputs=$total_inputs findings=$total_findings"
[ "$total_findings" -eq 0 ]

#!/bin/bash
# Builds the fuzzers with clang and its sanitizers and runs each for a while, two at a time (or as
# many as AT_ONCE says), from the inputs kept in fuzz/corpus. What one finds new stays in
# build/fuzz/grown; an input at which something is wrong is kept in build/fuzz/found, and its trace
# in build/logs. Prints a table; the last line is "N passed, N failed".
# usage: scripts/fuzz.sh [SECONDS [FUZZER...]]      60 seconds each, all of them
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

seconds=${1:-60}
case $seconds in
  *[!0-9]*) sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2 ;;
esac
[ $# = 0 ] || shift
fuzzers=("$@")
if [ ${#fuzzers[@]} = 0 ]; then
  for folder in fuzz/corpus/*/; do fuzzers+=("$(basename "$folder")"); done
fi

scripts/install_packages.sh --checks || exit 1
logs=$PWD/build/logs
mkdir -p "$logs" build/fuzz/found
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
if ! { cmake --preset fuzz "${launcher[@]}" && cmake --build --preset fuzz -j "$(nproc)"; } \
  >"$logs/fuzz-build.log" 2>&1 </dev/null; then
  cat "$logs/fuzz-build.log"
  echo '0 passed, 1 failed'
  exit 1
fi

# A block that is too large is a failed allocation, which the library has to take.
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1
# Replacing a file waits for the medium: in memory that is soon done.
if [ -z "${TMPDIR:-}" ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi

run() { # fuzzer: its exit status tells whether all was well
  local fuzzer=$1 grown=build/fuzz/grown/$1
  mkdir -p "$grown"
  "build/fuzz/fuzz/$fuzzer/fuzz_$fuzzer" -max_total_time="$seconds" -timeout=60 -max_len=4096 \
    -rss_limit_mb=3000 -print_final_stats=1 -artifact_prefix="build/fuzz/found/$fuzzer-" \
    "$grown" "fuzz/corpus/$fuzzer" >"$logs/fuzz-$fuzzer.log" 2>&1
}

at_once=${AT_ONCE:-2}
running=()
declare -A fuzzer_of
passed=0 failed=0
rows=()
finish_one() {
  local done_id status
  wait -n -p done_id "${running[@]}"
  status=$?
  local left=() id
  for id in "${running[@]}"; do [ "$id" = "$done_id" ] || left+=("$id"); done
  running=("${left[@]}")
  local fuzzer=${fuzzer_of[$done_id]} note=
  if [ $status = 0 ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1)) note="failed: see build/logs/fuzz-$fuzzer.log"
    tail -n 40 "$logs/fuzz-$fuzzer.log"
  fi
  rows+=("$(printf '%-16s %12s  %s' "$fuzzer" "$(
    sed -n 's/^stat::number_of_executed_units: *//p' "$logs/fuzz-$fuzzer.log"
  )" "$note")")
}
for fuzzer in "${fuzzers[@]}"; do
  [ ${#running[@]} -lt "$at_once" ] || finish_one
  run "$fuzzer" &
  running+=($!)
  fuzzer_of[$!]=$fuzzer
done
while [ ${#running[@]} -gt 0 ]; do finish_one; done

printf '%-16s %12s\n' fuzzer inputs
printf '%s\n' "${rows[@]}"
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]

#!/bin/bash
# Installs what is missing, builds, and runs every test: on this machine, and on request on every
# target that the project builds for, under its emulator, then each fuzzer for a minute, a short soak,
# the coverage and the quick ones of the linters. Prints a table at the end; the last line is
# "N passed, N failed", and the exit status is 0 only when nothing failed.
# usage: scripts/test.sh [--every-target]      the whole suite
#        scripts/test.sh TARGET...             on some targets only (names of the presets)
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

targets=(linux-gcc)
install=()
checks=no
case ${1:-} in
  '') ;;
  --every-target)
    targets=(linux-gcc linux-clang linux-aarch64 linux-armv7 windows-x64 windows-x86)
    install=(--every-target)
    checks=yes
    ;;
  -*) sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2 ;;
  *) targets=("$@") install=(--every-target) ;;
esac

logs=$PWD/build/logs
mkdir -p "$logs"
jobs=$(nproc)
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi

rows=()
passed_in_all=0
failed_in_all=0
tidy_up=()
at_exit() {
  local command
  for command in "${tidy_up[@]}"; do eval "$command"; done
}
trap at_exit EXIT

step() { # log file, command...: quiet when it works, its output when it does not
  local log=$1
  shift
  "$@" >"$log" 2>&1 </dev/null && return 0
  cat "$log"
  return 1
}

# Windows need a screen; a test is not to draw on the one that somebody is looking at.
start_screen() {
  local number=$logs/display
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >"$logs/xvfb.log" 2>&1 &
  tidy_up+=("kill $! 2>/dev/null")
  for _ in $(seq 100); do
    [ -s "$number" ] && break
    sleep 0.1
  done
  DISPLAY=:$(cat "$number")
  export DISPLAY
}

# One server that stays for the whole run; otherwise each program would boot a Windows of its own.
start_wine() {
  local target=$1
  export WINEPREFIX=$PWD/build/wine/$target WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
  export LC_ALL=C.UTF-8 # the names of files; without it Wine loses those beyond ASCII
  mkdir -p "$WINEPREFIX"
  step "$logs/$target-wine.log" timeout 300 "$2" wineboot --init || return 1
  # There is no window manager on the screen; Wine would wait for it at every window.
  step "$logs/$target-wine.log" timeout 60 "$2" reg add 'HKCU\Software\Wine\X11 Driver' \
    /v Managed /d N /f || return 1
  # Ends of blocks and blocks given back are marked (0x10 and 0x20), so that the tests can see
  # whether somebody wrote there: tests/support/heap_check.cpp.
  step "$logs/$target-wine.log" timeout 60 "$2" reg add \
    'HKLM\System\CurrentControlSet\Control\Session Manager' /v GlobalFlag /t REG_DWORD /d 0x30 /f ||
    return 1
  local server=/usr/lib/wine/wineserver
  [ -x $server ] || server=wineserver
  "$server" -p
  tidy_up+=("WINEPREFIX='$WINEPREFIX' $server -k")
}

wine_of() {
  sed -n 's/^TILTPOLE_WINE:[A-Z]*=\(.*\)$/\1/p' "build/$1/CMakeCache.txt" | grep -v NOTFOUND
}

row() { rows+=("$(printf '%-14s %8s %8s %8s %6s  %s' "$@")"); }

run_tests() {
  local target=$1 results=$logs/$1.xml
  rm -f "$results"
  ctest --preset "$target" -j "$jobs" --timeout 900 --no-tests=error --output-junit "$results" \
    --test-output-size-passed 4000000 --test-output-size-failed 4000000 </dev/null
  local status=$?
  local passed=0 failed=0 skipped=0 note=
  read -r passed failed skipped < <(python3 scripts/test_totals.py "$results") ||
    failed=1 note='ctest left no results'
  if [ $status -ne 0 ] && [ "$failed" = 0 ]; then failed=1 note="ctest ended with $status"; fi
  passed_in_all=$((passed_in_all + passed))
  failed_in_all=$((failed_in_all + failed))
  row "$target" "$passed" "$failed" "$skipped" "$SECONDS" "$note"
}

could_not() {
  failed_in_all=$((failed_in_all + 1))
  row "$1" 0 1 0 "$SECONDS" "$2"
}

test_target() {
  local target=$1 log=$logs/$1
  echo "=== $target"
  SECONDS=0
  case $target in
    linux-aarch64 | linux-armv7 | windows-*)
      step "$log-dependencies.log" scripts/cross_dependencies.sh "$target" ||
        { could_not "$target" 'its dependencies could not be built'; return; }
      ;;
  esac
  step "$log-configure.log" cmake --preset "$target" "${launcher[@]}" ||
    { could_not "$target" 'could not be configured'; return; }
  local wine= runs=yes
  [[ $target != windows-* ]] || wine=$(wine_of "$target")
  if [ "$target" = windows-x86 ] && [ -z "$wine" ]; then
    # The library and the programs alone: tests that cannot run are not worth their time.
    runs=no
    step "$log-configure.log" cmake --preset "$target" -DTILTPOLE_BUILD_TESTS=OFF ||
      { could_not "$target" 'could not be configured'; return; }
  fi
  step "$log-build.log" cmake --build --preset "$target" -j "$jobs" ||
    { could_not "$target" 'could not be built'; return; }
  if [ $runs = no ]; then
    row "$target" 0 0 0 "$SECONDS" 'built only, without tests: no 32-bit Wine can be had here'
    return
  fi
  if [[ $target == windows-* ]]; then
    start_wine "$target" "$wine" || { could_not "$target" 'Wine does not start'; return; }
  fi
  run_tests "$target"
}

run_fuzzers() {
  echo '=== fuzz'
  SECONDS=0
  scripts/fuzz.sh 60 2>&1 | tee "$logs/fuzz.log"
  local passed=0 failed=1
  if [[ $(tail -n 1 "$logs/fuzz.log") =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
    passed=${BASH_REMATCH[1]} failed=${BASH_REMATCH[2]}
  fi
  passed_in_all=$((passed_in_all + passed))
  failed_in_all=$((failed_in_all + failed))
  row fuzz "$passed" "$failed" 0 "$SECONDS" 'fuzzers, a minute each'
}

run_check() { # name, command...: one more test, whose output is shown
  local name=$1
  shift
  echo "=== $name"
  SECONDS=0
  if "$@"; then
    passed_in_all=$((passed_in_all + 1))
    row "$name" 1 0 0 "$SECONDS" "$*"
  else
    failed_in_all=$((failed_in_all + 1))
    row "$name" 0 1 0 "$SECONDS" "$*"
  fi
}

scripts/install_packages.sh "${install[@]}" || exit 1
start_screen
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
for target in "${targets[@]}"; do test_target "$target"; done
if [ $checks = yes ]; then
  run_fuzzers
  run_check soak scripts/soak.sh 2000000
  run_check coverage scripts/coverage.sh
  run_check lint scripts/lint.sh --quick
fi

echo
printf '%-14s %8s %8s %8s %6s\n' target passed failed skipped s
printf '%s\n' "${rows[@]}"
echo "$passed_in_all passed, $failed_in_all failed"
[ "$failed_in_all" = 0 ]

#!/bin/bash
# The tests of the rooms and of the programs under valgrind's memcheck: reads of memory that was never
# written, which no sanitizer of gcc sees, and leaks. Properties are tried ten times each, since a
# program runs some thirty times slower here. Needs a build without sanitizers: scripts/test.sh leaves
# one behind.
# usage: scripts/valgrind.sh [BUILD-FOLDER [ROOM...]]      build/linux-gcc, all of them
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

build=${1:-build/linux-gcc}
[ $# = 0 ] || shift
rooms=("$@")
if [ ${#rooms[@]} = 0 ]; then
  rooms=(records platform persistence positioning matrix estimation calibration screening quality
    controls controls_plots platform_qt c reproducibility faults faults_controls faults_files
    faults_view_files apps apps_draw field)
fi

scripts/install_packages.sh --checks || exit 1
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
export RC_PARAMS=${RC_PARAMS:-max_success=10}
passed=0 failed=0
for room in "${rooms[@]}"; do
  program=$(find "$build/tests" -name "tests_$room" -type f -perm -u+x | head -n 1)
  if [ -z "$program" ]; then
    echo "$room: tests_$room has not been built in $build"
    failed=$((failed + 1))
    continue
  fi
  log=build/logs/valgrind-$room.log
  mkdir -p build/logs
  SECONDS=0
  # Processes that a test starts in order to end them leak what they hold. The programs that let
  # allocations fail keep their own operator new, which takes its memory from malloc.
  if valgrind --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect \
    --child-silent-after-fork=yes --soname-synonyms=somalloc=nouserintercepts \
    --suppressions=scripts/valgrind.supp --quiet --log-file="$log" "$program" >"$log.out" 2>&1; then
    passed=$((passed + 1))
    echo "$room: clean, $SECONDS s"
  else
    failed=$((failed + 1))
    echo "$room: failed, $SECONDS s; see $log and $log.out"
    head -n 40 "$log"
    grep -a 'FAILED' "$log.out" | head -n 20
  fi
done
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]

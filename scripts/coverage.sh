#!/bin/bash
# Which lines and branches of the library its tests run through: a table per room, the list of what
# they do not run through, and a report to browse in build/coverage/report. Fails when a test
# fails, under 98 % of the lines or under 95 % of the branches.
# usage: scripts/coverage.sh
#
# The recording backend of the controls counts as test code. The native backend of Windows cannot be
# measured here: this compiler does not compile it for this machine; its tests run with
# scripts/test.sh windows-x64.
#
# What no test can reach stands in coverage_exclusions.txt with the reason. The branches that the
# compiler makes for exceptions, and what only an exception leads to, are left out, too.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2
[ $# = 0 ] || { sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2; }

build=$PWD/build/coverage
logs=$PWD/build/logs/coverage
report=$build/report
mkdir -p "$logs" "$report"
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi

scripts/install_packages.sh || exit 1
cmake --preset coverage "${launcher[@]}" >"$logs/configure.log" 2>&1 ||
  { cat "$logs/configure.log"; exit 1; }
mapfile -t programs < <(
  ninja -C "$build" -t targets all | sed -nE 's!^(tests/.*/(tests_[a-z_]+|platform_scenes|session_in_c)): CXX_EXECUTABLE.*!\1!p')
cmake --build "$build" -j "${JOBS:-$(nproc)}" --target "${programs[@]}" >"$logs/build.log" 2>&1 ||
  { cat "$logs/build.log"; exit 1; }

# Counts of an earlier run would stay in the sum.
find "$build" -name '*.gcda' -delete
export QT_QPA_PLATFORM=offscreen
failed=0
run() { # program, arguments...
  local log=$logs/${1##*/}.log
  (cd "$build/$(dirname "$1")" && "$build/$1" "${@:2}") >"$log" 2>&1 </dev/null ||
    { echo "FAILED: $1, see $log"; failed=1; }
}
for program in "${programs[@]}"; do
  case $program in
    */session_in_c) run "$program" "$build/session_in_c.txt" ;;
    */platform_scenes) run "$program" "$build/tests/platform_scenes/pictures" ;;
    */tests_platform_qt)
      run "$program"
      # A screen of finer pixels is drawn upon in another way.
      QT_SCALE_FACTOR=1.5 run "$program" '--gtest_filter=-*TenThousand*'
      ;;
    *) run "$program" ;;
  esac
done

python3 scripts/read_coverage.py "$build" "$report/coverage.json" || exit 1
gcovr --root "$PWD" --add-tracefile "$report/coverage.json" --html-details "$report/index.html" \
  >"$logs/gcovr.log" 2>&1 || { cat "$logs/gcovr.log"; exit 1; }
python3 scripts/coverage_table.py "$report/coverage.json" || failed=1
echo "to browse: $report/index.html"
exit $failed

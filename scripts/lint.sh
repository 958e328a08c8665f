#!/bin/bash
# Every C++ file as clang-format wants it, and nothing that clang-tidy or cppcheck finds.
# usage: scripts/lint.sh [--quick] [FILE...]      all that git knows; quick: without clang-tidy, which
#                                                 takes twenty minutes of processor time
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

quick=no
if [ "${1:-}" = --quick ]; then
  quick=yes
  shift
fi
files=("$@")
if [ ${#files[@]} = 0 ]; then mapfile -t files < <(git ls-files '*.h' '*.cpp'); fi
build=build/lint
logs=$PWD/build/logs
mkdir -p "$logs"
failed=0
tell() { # name, status, log
  if [ "$2" = 0 ]; then
    echo "$1: clean"
  else
    failed=$((failed + 1))
    grep -hE 'warning:|error:|style:|performance:|portability:' "$3" | sort -u | head -n 60
    echo "$1: findings, see $3"
  fi
}

scripts/install_packages.sh --checks || exit 1
clang-format --dry-run -Werror "${files[@]}" >"$logs/clang-format.log" 2>&1
tell clang-format $? "$logs/clang-format.log"

# The compile commands must be clang's: those of gcc name no standard and flags that it does not know.
if ! cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DTILTPOLE_BUILD_BENCHMARKS=ON >"$logs/lint-configure.log" 2>&1; then
  cat "$logs/lint-configure.log"
  exit 1
fi

# Only what this system compiles; what Windows compiles is held by its own compiler's warnings.
python3 - $build "${files[@]}" >"$logs/lint-files" <<'END'
import json, os, sys
compiled = {os.path.realpath(os.path.join(entry["directory"], entry["file"]))
            for entry in json.load(open(sys.argv[1] + "/compile_commands.json"))}
print("\n".join(f for f in sys.argv[2:] if os.path.realpath(f) in compiled))
END

if [ $quick = no ]; then
  mapfile -t compiled <"$logs/lint-files"
  scripts/tidy.py $build "${compiled[@]}" >"$logs/clang-tidy.log" 2>&1
  tell clang-tidy $? "$logs/clang-tidy.log"
fi

# Tests are left to clang-tidy: cppcheck does not see through their macros.
grep -v '^tests/\|^fuzz/' "$logs/lint-files" >"$logs/cppcheck-files"
if [ -s "$logs/cppcheck-files" ]; then
  cppcheck --std=c++17 --language=c++ --enable=warning,performance,portability --inline-suppr \
    --suppressions-list=scripts/cppcheck-suppressions.txt --error-exitcode=1 --quiet -j "$(nproc)" \
    -I . -I $build/generated --file-list="$logs/cppcheck-files" >"$logs/cppcheck.log" 2>&1
  tell cppcheck $? "$logs/cppcheck.log"
fi
[ "$failed" = 0 ]

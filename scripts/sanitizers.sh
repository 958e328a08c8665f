#!/bin/bash
# The whole suite with the address, leak and undefined-behaviour sanitizers (conversions from floating
# point to int included); the first finding fails its test.
# usage: scripts/sanitizers.sh [CTEST-ARGUMENT...]      for example -R '^calibration'
#        TILTPOLE_WINDOWING=none scripts/sanitizers.sh  without the windows
set -euo pipefail
cd "$(dirname "$0")/.."

launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
windowing=()
if [ -n "${TILTPOLE_WINDOWING:-}" ]; then windowing=(-DTILTPOLE_WINDOWING="$TILTPOLE_WINDOWING"); fi
scripts/install_packages.sh
cmake --preset sanitizers "${launcher[@]}" "${windowing[@]}"
cmake --build --preset sanitizers -j "$(nproc)"

# A block that is too large is a failed allocation, which the library has to take.
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1:strict_string_checks=1
export ASAN_OPTIONS=$ASAN_OPTIONS:suppressions=$PWD/scripts/addresses-of-others.txt
# What Qt and what it loads keep to the end of the process is not ours.
export LSAN_OPTIONS=suppressions=$PWD/scripts/leaks-of-others.txt:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
ctest --preset sanitizers -j "$(nproc)" --timeout 900 --no-tests=error "$@"

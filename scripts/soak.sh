#!/bin/bash
# Long runs: calibrations of 1 to 200,000 samples a turn, then ten million samples through
# positioning, screening and plots, during which memory must not grow. The figures of one run stand
# in docs/long-runs.md.
# usage: scripts/soak.sh [SAMPLES]
set -euo pipefail
cd "$(dirname "$0")/.."
samples=${1:-10000000}
[[ $samples =~ ^[0-9]+$ ]] || { sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2; }

build=$PWD/build/soak
log=$PWD/build/logs/soak.log
mkdir -p "$(dirname "$log")"
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
{
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE=-O2 \
    -DTILTPOLE_WINDOWING=none -DTILTPOLE_BUILD_APPS=OFF "${launcher[@]}"
  cmake --build "$build" -j "${JOBS:-$(nproc)}" --target soak
} >"$log" 2>&1 || { cat "$log"; exit 1; }
exec "$build/tests/soak/soak" "$samples"

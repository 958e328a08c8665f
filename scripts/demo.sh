#!/bin/bash
# Installs what is missing, builds the command line, and measures a simulated block of points:
# simulate a pole with imperfect sensors, calibrate it from two turns, and show how far each tip is
# from the truth.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh
mkdir -p build/demo
log=build/demo/build.log
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
if ! { cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DTILTPOLE_BUILD_TESTS=OFF \
  "${launcher[@]}" && cmake --build build/demo; } >"$log" 2>&1; then
  cat "$log"
  exit 1
fi

tiltpole=build/demo/apps/tiltpole/tiltpole
show() {
  echo
  echo "\$ tiltpole $*"
  "$tiltpole" "$@"
}
survey=build/demo/survey.csv
parameters=build/demo/parameters.txt
show simulate --seed 1 --points 200 --max-tilt 45 -o "$survey"
show calibrate "$survey" -o "$parameters"
show measure "$survey" --params "$parameters" --pole-length 2 -o build/demo/tips.csv
echo
echo "The tips, one row a point, are in build/demo/tips.csv"

#!/bin/bash
# Makes the pictures of the guides anew, with the programs of a build.
# usage: scripts/pictures.sh BUILD [WINDOWS_BUILD]    for example build/linux-gcc build/windows-x64
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?usage: scripts/pictures.sh BUILD [WINDOWS_BUILD]}
tiltpole=$build/apps/tiltpole/tiltpole
pictures=docs/pictures
session=$(mktemp --suffix=.csv)
trap 'rm -f "$session"' EXIT

"$tiltpole" simulate --seed 1 --samples 360 -o "$session"
"$tiltpole" draw compass --value 37 --mark 120 300 --size 300 300 -o $pictures/compass.png
"$tiltpole" draw gauges --value 62 --mark 90 --size 200 300 -o $pictures/gauges.png
"$tiltpole" draw plot "$session" --center 600 -500 0 --size 300 300 -o $pictures/plot.png
# The report is a page: a browser shows it. Half of its horizontal turn is left out.
if command -v chromium > /dev/null; then
  report=$(mktemp -d)
  awk -F, '$1 != "horizontal" || ++rows <= 180' "$session" > "$report/survey.csv"
  (cd "$report" && "$OLDPWD/$tiltpole" calibrate survey.csv -o pole.txt --report report.html)
  chromium --headless --no-sandbox --hide-scrollbars --window-size=1000,1660 \
    --screenshot="$report/report.png" "file://$report/report.html"
  cp "$report/report.png" $pictures/report.png
  rm -r "$report"
fi
screen=()
if [ -z "${DISPLAY:-}" ]; then screen=(xvfb-run -a); fi
QT_QPA_PLATFORM=xcb "${screen[@]}" "$build/examples/qt/qt_dialog" "$session" \
  $pictures/dialog-qt.png
if [ -n "${2:-}" ]; then
  export WINEPREFIX=$PWD/build/wine/windows-x64 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
  wine=$(sed -n 's/^TILTPOLE_WINE:[A-Z]*=//p' "$2/CMakeCache.txt")
  "${screen[@]}" "$wine" "$2/examples/win32/win32_dialog.exe" "$session" "$session.ppm"
  python3 scripts/ppm_to_png.py "$session.ppm" $pictures/dialog-win32.png
  rm "$session.ppm"
fi

#!/bin/sh
# Runs a program on the screen at hand, or on one of its own where there is none.
# usage: on_a_screen.sh PROGRAM...
QT_QPA_PLATFORM=xcb
export QT_QPA_PLATFORM
[ -n "$DISPLAY" ] && exec "$@"
exec xvfb-run -a -s '-screen 0 1280x1024x24' "$@"

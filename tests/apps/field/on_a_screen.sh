#!/bin/sh
# Runs a program on a screen of its own: on a shared one another program's window would take the
# keys that are meant for this one.
# usage: on_a_screen.sh PROGRAM...
QT_QPA_PLATFORM=xcb
export QT_QPA_PLATFORM
exec xvfb-run -a -s '-screen 0 1280x1024x24' "$@"

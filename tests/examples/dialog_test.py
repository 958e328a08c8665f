#!/usr/bin/env python3
"""Runs an example host in a real window, on a simulated session, and looks at its screenshot.

usage: dialog_test.py --emulator=PROGRAM COMMAND_LINE_PROGRAM SCREENSHOT.ppm DIALOG

The emulator runs the programs of another system; without one it is empty.
"""

import os
import shutil
import subprocess
import sys

# What must be seen of each control, by colours that nothing else in the dialog has.
SEEN = {
    "the compass' and the gauges' ground": ((102, 255, 255), 1000),
    "the face": ((204, 255, 102), 10000),
    "needle and values": ((255, 0, 0), 200),
    "ticks": ((255, 0, 255), 200),
    "the mark at north": ((0, 255, 0), 20),
    "the plots' field": ((0, 0, 0), 50000),
    "the plots' axes": ((0, 255, 255), 100),
    "the turn about the vertical": ((255, 255, 255), 500),
}


def read_ppm(file):
    data = open(file, "rb").read()
    fields = data.split(maxsplit=4)
    width, height = int(fields[1]), int(fields[2])
    pixels = data[-3 * width * height:]
    return [tuple(pixels[i:i + 3]) for i in range(0, len(pixels), 3)]


def main():
    emulator, command_line, screenshot, dialog = sys.argv[1:]
    run = [part for part in emulator.removeprefix("--emulator=").split(";") if part]
    session = screenshot + ".csv"
    subprocess.run([*run, command_line, "simulate", "--seed", "7", "-o", session], check=True)
    screen = [] if os.environ.get("DISPLAY") else [shutil.which("xvfb-run") or "xvfb-run", "-a"]
    subprocess.run([*screen, *run, dialog, session, screenshot], check=True, timeout=120)
    pixels = read_ppm(screenshot)
    missing = False
    for what, (colour, at_least) in SEEN.items():
        count = pixels.count(colour)
        print(f"{what}: {count} pixels of {colour}, expected at least {at_least}")
        missing = missing or count < at_least
    return 1 if missing else 0


sys.exit(main())

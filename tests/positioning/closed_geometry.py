#!/usr/bin/env python3
"""Prints rows for the tables of tips beside this script, from closed geometry alone.

    closed_geometry.py NAME HEADING PITCH ROLL LENGTH [DIP]

NAME holds no comma.

A pole stands plumb with its x axis on HEADING, its x axis is raised by PITCH, then it is turned about
the x axis by ROLL (all in degrees, a positive ROLL raises the left side). The first row printed is for
tips_from_headings.csv, the second for tips_from_readings.csv, with a magnetic field of 5000 counts
that points north and down by DIP.
"""

import math
import sys


def attitude(heading, pitch, roll):
    """The pole's axes in north, east, up."""
    ch, sh = math.cos(heading), math.sin(heading)
    cp, sp = math.cos(pitch), math.sin(pitch)
    cr, sr = math.cos(roll), math.sin(roll)
    forward = (ch * cp, sh * cp, sp)
    left_before = (sh, -ch, 0.0)
    up_before = (-ch * sp, -sh * sp, cp)
    left = tuple(cr * a + sr * b for a, b in zip(left_before, up_before))
    up = tuple(cr * b - sr * a for a, b in zip(left_before, up_before))
    return forward, left, up


def main():
    name = sys.argv[1]
    heading, pitch, roll, length = (float(text) for text in sys.argv[2:6])
    dip = math.radians(float(sys.argv[6]) if len(sys.argv) > 6 else 60.0)
    forward, left, up = attitude(*(math.radians(angle) for angle in (heading, pitch, roll)))
    tip = [-length * part for part in up]
    tip_text = ",".join(f"{part:.12f}" for part in tip)
    incline_x = math.degrees(math.asin(forward[2]))
    incline_y = math.degrees(math.asin(left[2]))
    print(f"{name},{incline_x:.12f},{incline_y:.12f},{heading},{length},{tip_text},1e-9")
    field = (5000.0 * math.cos(dip), 0.0, -5000.0 * math.sin(dip))
    reading = [sum(a * b for a, b in zip(axis, field)) for axis in (forward, left, up)]
    reading_text = ",".join(f"{part:.9f}" for part in reading)
    turned_text = f"{-reading[0]:.9f},{-reading[1]:.9f},{reading[2]:.9f}"
    print(f"{name},{incline_x:.12f},{incline_y:.12f},{reading_text},{turned_text},"
          f"{length},{heading},{tip_text},1e-8")


if __name__ == "__main__":
    main()

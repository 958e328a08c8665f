#!/usr/bin/env python3
"""Writes function_values.txt: mathematical functions at arguments such as the library asks them for,
correctly rounded. Needs mpmath; run by hand when a function is added."""

import pathlib
import random
import struct

import mpmath

mpmath.mp.prec = 300
COUNT = 250
RANGES = {
    "sin": [(-6.3, 6.3)], "cos": [(-6.3, 6.3)], "tan": [(-1.5, 1.5)], "asin": [(-1, 1)],
    "acos": [(-1, 1)], "atan": [(-50, 50)], "atan2": [(-5000, 5000)] * 2, "hypot": [(-5000, 5000)] * 2,
}


def bits(value: float) -> str:
    return struct.pack(">d", value).hex()


def main() -> None:
    draw = random.Random(1)
    with open(pathlib.Path(__file__).parent / "function_values.txt", "w", encoding="ascii") as out:
        out.write("# Written by make_function_values.py: arguments, then the correctly rounded value.\n")
        for name, ranges in RANGES.items():
            for _ in range(COUNT):
                arguments = [draw.uniform(*limits) for limits in ranges]
                value = float(getattr(mpmath, name)(*map(mpmath.mpf, arguments)))
                out.write(f"{name}|{' '.join(map(bits, [*arguments, value]))}\n")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Turns a PPM picture, as the Windows example writes it, into a PNG.

usage: ppm_to_png.py PICTURE.ppm PICTURE.png
"""

import pathlib
import struct
import sys
import zlib


def chunk(kind, content):
    return (struct.pack(">I", len(content)) + kind + content
            + struct.pack(">I", zlib.crc32(kind + content)))


def main():
    source, target = (pathlib.Path(argument) for argument in sys.argv[1:])
    _, size, _, pixels = source.read_bytes().split(b"\n", 3)
    width, height = map(int, size.split())
    rows = b"".join(b"\0" + pixels[3 * width * y:3 * width * (y + 1)] for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    target.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                       + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


main()

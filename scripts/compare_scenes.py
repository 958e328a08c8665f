#!/usr/bin/env python3
"""Compares the pictures that two windowing systems drew of the same scenes.

usage: compare_scenes.py FOLDER OTHER_FOLDER

Outlines and fills must agree pixel by pixel but for a small share, and nearly all that differ by no
more than one pixel; texts, whose fonts differ, only by where they stand and how large they are.
Texts that run into each other count as one. Exit status 77: there is nothing to compare with.
"""

import collections
import pathlib
import sys

# Shares of the pixels outside of texts. The scene of shapes holds ellipses and polygons without an
# outline, which no control draws, and whose last pixel each system has its own rule for.
LEAST_EQUAL = 0.995
LEAST_EQUAL_OF = {"shapes": 0.99}
LEAST_WITHIN_ONE_PIXEL = 0.998
TEXT_TOLERANCE = 4  # pixels, for each edge of a text


class Picture:
    def __init__(self, file):
        data = file.read_bytes()
        self.texts = []
        header = []
        place = 0
        while len(header) < 4:
            end = data.index(b"\n", place)
            line = data[place:end].decode()
            place = end + 1
            if line.startswith("# text "):
                numbers = [int(field) for field in line.split()[2:]]
                self.texts.append((tuple(numbers[:4]), tuple(numbers[4:])))
            else:
                header += line.split()
        self.width, self.height = int(header[1]), int(header[2])
        self.pixels = data[place:]

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return self.pixels[start:start + 3]


def has_near(picture, x, y, pixel):
    return any(picture.at(u, v) == pixel
               for v in range(max(y - 1, 0), min(y + 2, picture.height))
               for u in range(max(x - 1, 0), min(x + 2, picture.width)))


def shares(one, other):
    """The shares of pixels that are equal, and that are at most one pixel away on both sides."""
    equal = near = total = 0
    for y in range(one.height):
        for x in range(one.width):
            if any(l <= x < r and t <= y < b for (l, t, r, b), _ in one.texts):
                continue
            total += 1
            a, b = one.at(x, y), other.at(x, y)
            equal += a == b
            near += a == b or (has_near(other, x, y, a) and has_near(one, x, y, b))
    return equal / total, near / total


def overlap(one, other):
    return (one[0] < other[2] and other[0] < one[2] and
            one[1] < other[3] and other[1] < one[3])


def texts_apart(texts):
    """The boxes of texts of one colour that overlap, together."""
    groups = []
    for box, colour in texts:
        touched = [group for group in groups
                   if group[1] == colour and any(overlap(box, other) for other in group[0])]
        groups = [group for group in groups if group not in touched]
        groups.append(([box] + [other for group in touched for other in group[0]], colour))
    return groups


def edges_of_text(picture, boxes, colour):
    """The box around all pixels on the way from the ground's colour to the text's."""
    places = {(x, y) for left, top, right, bottom in boxes
              for y in range(max(top, 0), min(bottom, picture.height))
              for x in range(max(left, 0), min(right, picture.width))}
    ground = collections.Counter(picture.at(x, y) for x, y in places).most_common(1)[0][0]
    way = [c - g for c, g in zip(colour, ground)]

    def is_ink(pixel):
        step = [p - g for p, g in zip(pixel, ground)]
        done = sum(s * w for s, w in zip(step, way)) / sum(w * w for w in way)
        return done > 0.35 and all(abs(s - done * w) < 30 for s, w in zip(step, way))

    ink = [place for place in places if is_ink(picture.at(*place))]
    if not ink:
        return None
    return (min(x for x, _ in ink), min(y for _, y in ink),
            max(x for x, _ in ink), max(y for _, y in ink))


def texts_that_differ(one, other):
    differing = []
    for boxes, colour in texts_apart(one.texts):
        a, b = edges_of_text(one, boxes, colour), edges_of_text(other, boxes, colour)
        if a is None or b is None:
            agree = a == b
        else:
            agree = all(abs(p - q) <= TEXT_TOLERANCE for p, q in zip(a, b))
        if not agree:
            differing.append((boxes, a, b))
    return differing


def compare(file, other_file):
    one, other = Picture(file), Picture(other_file)
    if (one.width, one.height, one.texts) != (other.width, other.height, other.texts):
        print(f"{file.stem:20} differs in size or in the places of its texts")
        return False
    equal, near = shares(one, other)
    differing = texts_that_differ(one, other)
    texts = len(texts_apart(one.texts))
    print(f"{file.stem:20} {100 * equal:8.3f} % equal, {100 * near:8.3f} % within one pixel, "
          f"{texts - len(differing)} of {texts} texts agree")
    for boxes, a, b in differing:
        print(f"{'':20} text in {boxes}: {a} against {b}")
    least = LEAST_EQUAL_OF.get(file.stem, LEAST_EQUAL)
    return equal >= least and near >= LEAST_WITHIN_ONE_PIXEL and not differing


def main():
    folder, other_folder = (pathlib.Path(argument) for argument in sys.argv[1:])
    files = sorted(folder.glob("*.ppm"))
    others = {file.name for file in other_folder.glob("*.ppm")}
    if not others:
        print(f"skipped: no pictures in {other_folder}; build and test that target first")
        return 77
    if not files or others != {file.name for file in files}:
        print("the folders hold different scenes")
        return 1
    results = [compare(file, other_folder / file.name) for file in files]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Holds the house plan: which room of the library may include which other."""

import pathlib
import re
import sys

MAY_INCLUDE = {
    "records": set(),
    "matrix": set(),
    "platform": set(),
    "persistence": {"platform"},
    "positioning": {"records", "persistence"},
    "estimation": {"matrix", "platform"},
    "calibration": {"records", "matrix", "estimation", "platform"},
    "screening": {"records"},
    "quality": {"records", "platform", "positioning", "calibration", "screening"},
    "controls": {"platform"},
    "c": {"records", "platform", "persistence", "positioning", "estimation", "calibration",
          "screening", "quality"},
}

INCLUDE = re.compile(r'^\s*#\s*include\s*["<](apps|tests|tiltpole/([a-z]+))/', re.MULTILINE)


def main() -> int:
    library = pathlib.Path(__file__).resolve().parent.parent / "tiltpole"
    wrong = []
    seen = 0
    for file in sorted(library.rglob("*")):
        if file.suffix not in {".h", ".cpp"} or file.parent == library:
            continue
        room = file.relative_to(library).parts[0]
        text = file.read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            seen += 1
            target = match.group(2)
            if target != room and target not in MAY_INCLUDE[room]:
                line = text.count("\n", 0, match.start()) + 1
                wrong.append(f"{file}:{line}: {room} may not include {match.group(1)}")
    for message in wrong:
        print(message)
    if seen == 0:
        print("found no include at all: this check no longer looks at the library")
    return 1 if wrong or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Holds the house plan: which room of the library may include which other, and that the hosts
include no internals of any."""

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

ROOT = pathlib.Path(__file__).resolve().parent.parent

# These have what every host has: what lies in a detail folder may change with any version, and of
# the platform only a few headers are installed.
HOSTS = ("apps", "examples", "docs/samples")
INSTALLED_OF_PLATFORM = set(re.findall(
    r"\bplatform/\w+\.h\b", (ROOT / "cmake/TiltpoleInstall.cmake").read_text(encoding="utf-8")))

INCLUDE = re.compile(r'^\s*#\s*include\s*["<]((apps|tests|tiltpole)/(?:([^"/>]+)/)?[^">]+)',
                     re.MULTILINE)


def includes_in(folder: str) -> list:
    """The includes of this project's files: the file, the line, and the match of INCLUDE."""
    found = []
    for file in sorted((ROOT / folder).rglob("*")):
        if file.suffix not in {".h", ".cpp", ".c"}:
            continue
        text = file.read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            found.append((file, text.count("\n", 0, match.start(1)) + 1, match))
    return found


def is_for_hosts(header: str, room: str) -> bool:
    """Whether a header of the library, named from its folder, goes to hosts."""
    return header in INSTALLED_OF_PLATFORM if room == "platform" else "/detail/" not in header


def is_allowed(file: pathlib.Path, include: re.Match) -> bool:
    """Whether a file may have the include."""
    path, top, room = include.groups()
    parts = file.relative_to(ROOT).parts
    if parts[0] != "tiltpole":
        return top != "tiltpole" or is_for_hosts(path.removeprefix("tiltpole/"), room)
    if len(parts) == 2:  # the headers of all rooms
        return True
    return top == "tiltpole" and (room in {None, parts[1]} or room in MAY_INCLUDE[parts[1]])


def main() -> int:
    wrong = []
    for folder in ("tiltpole", *HOSTS):
        found = includes_in(folder)
        if not found:
            wrong.append(f"found no include at all: this check no longer looks at {folder}")
        for file, line, include in found:
            if not is_allowed(file, include):
                wrong.append(f"{file.relative_to(ROOT)}:{line}: may not include {include.group(1)}")
    for message in wrong:
        print(message)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())

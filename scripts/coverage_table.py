#!/usr/bin/env python3
"""Lines and branches per room from gcovr's JSON, what is not covered, and what is left out and why.

usage: coverage_table.py coverage.json
Exit status 0 when the whole library reaches the shares below.
"""

import collections
import json
import pathlib
import sys

LEAST_LINES = 98.0
LEAST_BRANCHES = 95.0


class Tally:
    def __init__(self):
        self.lines = self.lines_hit = self.branches = self.branches_hit = 0

    def add(self, line):
        self.lines += 1
        self.lines_hit += line["count"] > 0
        taken = [b["count"] > 0 for b in line["branches"]]
        self.branches += len(taken)
        self.branches_hit += sum(taken)

    @staticmethod
    def share(hit, of):
        return 100.0 * hit / of if of else 100.0

    def line_share(self):
        return self.share(self.lines_hit, self.lines)

    def branch_share(self):
        return self.share(self.branches_hit, self.branches)

    def row(self, name):
        return (f"{name:<22} {self.lines_hit:>6}/{self.lines:<6} {self.line_share():6.2f} %"
                f"  {self.branches_hit:>6}/{self.branches:<6} {self.branch_share():6.2f} %")


def room_of(path):
    parts = pathlib.PurePath(path).parts
    if parts[1] == "platform" and len(parts) > 3:
        return "platform/" + parts[2]
    return parts[1]


def print_misses(path, lines):
    for line in lines:
        taken = [b["count"] > 0 for b in line["branches"]]
        if line["count"] == 0:
            print(f"  {path}:{line['line_number']}: never run")
        elif not all(taken):
            print(f"  {path}:{line['line_number']}: {taken.count(False)} of {len(taken)} branches "
                  "never taken")


def print_exclusions():
    print("left out, with the reason:")
    for text in (pathlib.Path(__file__).parent / "coverage_exclusions.txt").read_text().splitlines():
        if text and not text.startswith("#"):
            print("  " + text)


def main():
    files = json.loads(pathlib.Path(sys.argv[1]).read_text())["files"]
    rooms = collections.defaultdict(Tally)
    whole = Tally()
    print("not covered:")
    for file in sorted(files, key=lambda f: f["file"]):
        lines = [line for line in file["lines"] if not line["gcovr/noncode"]]
        for line in lines:
            rooms[room_of(file["file"])].add(line)
            whole.add(line)
        print_misses(file["file"], lines)
    print_exclusions()
    print(f"\n{'room':<22} {'lines':>20}   {'branches':>22}")
    for room in sorted(rooms):
        print(rooms[room].row(room))
    print(whole.row("the library"))
    if whole.line_share() < LEAST_LINES or whole.branch_share() < LEAST_BRANCHES:
        print(f"too little: {LEAST_LINES:.0f} % of the lines and {LEAST_BRANCHES:.0f} % of the "
              "branches are asked for")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

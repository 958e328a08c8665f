#!/usr/bin/env python3
"""Sums up what gcov knows of the library into a file that gcovr reads (gcovr --add-tracefile).

usage: read_coverage.py BUILD_FOLDER OUT.json

gcovr would read gcov's own text, but that does not tell the branches of exceptions from others
where a function was compiled into several programs and one of them never calls it. gcov's JSON
does.

Left out are the branches of exceptions, those in code that only an exception leads to (see
exception_paths.py; a handler that never runs still shows, by its lines), lines of braces alone,
where the compiler only puts what clears up behind an exception, and what
scripts/coverage_exclusions.txt names with a reason.
"""

import collections
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

from exception_paths import ExceptionPaths

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIBRARY = ROOT / "tiltpole"
TEST_CODE = LIBRARY / "platform" / "recording"
EXCLUSIONS = ROOT / "scripts" / "coverage_exclusions.txt"


def gcov(notes):
    result = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", notes],
                            cwd=notes.parent, capture_output=True, text=True, check=True)
    exceptional = ExceptionPaths(notes)
    return [found for text in result.stdout.splitlines()
            for found in of_library(json.loads(text), exceptional)]


def of_library(report, exceptional):
    """(path, line number, count, counts of its branches) for each line of each function."""
    for file in report["files"]:
        path = pathlib.Path(os.path.normpath(
            pathlib.Path(report["current_working_directory"]) / file["file"]))
        if LIBRARY not in path.parents or TEST_CODE in path.parents:
            continue
        for line in file["lines"]:
            left_out = exceptional.of(line.get("function_name"), file["file"],
                                      line["line_number"], len(line["branches"]))
            branches = tuple(branch["count"] for branch, exception in zip(line["branches"], left_out)
                             if not branch["throw"] and not exception)
            yield str(path.relative_to(ROOT)), line["line_number"], line["count"], branches


class Line:
    """A line, summed over the programs and the instances of its template.

    Instances that have other branches are kept apart, and one that never ran says nothing when
    another did.
    """

    def __init__(self):
        self.count = 0
        self.shapes = {}

    def add(self, count, branches):
        self.count += count
        if len(branches) > 1:
            old = self.shapes.get(len(branches), (0, (0,) * len(branches)))
            self.shapes[len(branches)] = (old[0] + count,
                                          tuple(a + b for a, b in zip(old[1], branches)))

    def branches(self):
        ran = [counts for count, counts in self.shapes.values() if count > 0]
        shapes = ran or [counts for _, counts in self.shapes.values()]
        return [count for counts in shapes for count in counts]


def exclusions():
    """{path: [piece of a line]}"""
    pieces = collections.defaultdict(list)
    for text in EXCLUSIONS.read_text().splitlines():
        place = re.match(r"(tiltpole/\S+): (.+)", text)
        if place:
            if place.group(2) not in (ROOT / place.group(1)).read_text():
                sys.exit(f"{EXCLUSIONS.name} names what is no longer there: {text}")
            pieces[place.group(1)].append(place.group(2))
    return pieces


def lines_of_file(path, lines, excluded):
    source = (ROOT / path).read_text().splitlines()
    for number, line in sorted(lines.items()):
        text = source[number - 1]
        if re.fullmatch(r"[{}();]*", re.sub(r"//.*", "", text).strip()):
            continue
        branches = line.branches()
        if any(piece in text for piece in excluded):
            if line.count == 0:
                continue
            branches = [count for count in branches if count > 0]
        yield {
            "line_number": number,
            "count": line.count,
            "gcovr/noncode": False,
            "gcovr/excluded": False,
            "branches": [{"count": count, "fallthrough": False, "throw": False}
                         for count in branches],
        }


def main():
    build, out = map(pathlib.Path, sys.argv[1:])
    files = collections.defaultdict(lambda: collections.defaultdict(Line))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for found in pool.map(gcov, sorted(build.resolve().rglob("*.gcno"))):
            for path, number, count, branches in found:
                files[path][number].add(count, branches)
    excluded = exclusions()
    out.write_text(json.dumps({
        "gcovr/format_version": "0.3",
        "files": [{"file": path, "functions": [],
                   "lines": list(lines_of_file(path, files[path], excluded[path]))}
                  for path in sorted(files)],
    }))


if __name__ == "__main__":
    main()

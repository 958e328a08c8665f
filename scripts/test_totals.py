#!/usr/bin/env python3
"""Counts the test cases of one ctest run, from the JUnit file that ctest wrote.

usage: test_totals.py JUNIT_FILE

Prints "PASSED FAILED SKIPPED". A ctest entry that ran a whole GoogleTest program counts as the
cases that the program says it ran; every other entry, and a program that died on the way, as one.
"""

import re
import sys
import xml.etree.ElementTree

PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?\.", re.MULTILINE)
FAILED = re.compile(r"^\[  FAILED  \] (\d+) tests?, listed below", re.MULTILINE)
SKIPPED = re.compile(r"^\[  SKIPPED \] (\d+) tests?, listed below", re.MULTILINE)


def number(pattern: re.Pattern, output: str) -> int:
    match = pattern.search(output)
    return int(match.group(1)) if match else 0


def count(case: xml.etree.ElementTree.Element) -> tuple[int, int, int]:
    output = case.findtext("system-out") or ""
    passed, failed, skipped = (number(p, output) for p in (PASSED, FAILED, SKIPPED))
    status = case.get("status")
    if status == "run" and passed + skipped > 0:
        return passed, failed, skipped
    if status == "run":
        return 1, 0, 0
    if case.find("skipped") is not None and status in ("notrun", "disabled"):
        reason = (case.find("skipped").get("message") or "").lower()
        return (0, 0, 1) if status == "disabled" or "skip" in reason else (0, 1, 0)
    return passed, max(failed, 1), skipped


def main() -> int:
    root = xml.etree.ElementTree.parse(sys.argv[1]).getroot()
    totals = [sum(column) for column in zip(*(count(c) for c in root.iter("testcase")))] or [0, 0, 0]
    print(*totals)
    return 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Reads the reports that the program writes with a strict XML parser: tiltpole calibrate --report."""

import pathlib
import re
import subprocess
import sys
import tempfile
from xml.etree import ElementTree

NUMBER = r"-?\d+\.\d"
PATH = rf"(M{NUMBER} {NUMBER}(h0|(L{NUMBER} {NUMBER})*Z?|A({NUMBER} ){{2}}0 [01] 1 {NUMBER} {NUMBER}))+"


def calibrate(program: str, session: pathlib.Path, status: int) -> ElementTree.Element:
    report = session.parent / "report.html"
    command = [program, "calibrate", session, "-o", session.parent / "pole.txt", "--report", report]
    run = subprocess.run(command, capture_output=True, check=False)
    assert run.returncode == status, (run.returncode, run.stderr)
    text = report.read_text(encoding="utf-8")
    # A browser takes <p/> for an opening <p>: only what never holds anything may close itself.
    closed = set(re.findall(r"<(\w+)[^<>]*/>", text))
    assert closed <= {"meta", "line", "rect", "circle", "path"}, closed
    return ElementTree.fromstring(text)


def text_of(element: ElementTree.Element) -> str:
    return " ".join("".join(element.itertext()).split())


def check_structure(page: ElementTree.Element, pictures: int) -> None:
    assert page.tag == "html"
    assert len(page.findall(".//svg")) == pictures, len(page.findall(".//svg"))
    for element in page.iter():
        for name, value in element.attrib.items():
            assert name not in {"href", "src"}, (element.tag, name)
            assert "nan" not in value and "inf" not in value.split(), (element.tag, value)
    for path in page.iter("path"):
        assert re.fullmatch(PATH, path.get("d")), path.get("d")[:80]


def main() -> int:
    program = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder:
        session = pathlib.Path(folder) / "poles <&> \"ä\".csv"
        subprocess.run([program, "simulate", "--seed", "4", "-o", session], check=True)
        rows = session.read_text(encoding="utf-8").splitlines(keepends=True)

        page = calibrate(program, session, 0)
        check_structure(page, 15)
        text = text_of(page)
        assert "Verdict: good" in text, text[:400]
        assert "poles <&> \"ä\".csv" in text, text[:400]

        horizontal = [row for row in rows if row.startswith("horizontal")]
        vertical = [row for row in rows if row.startswith("vertical")]
        session.write_text("".join(rows[:1] + horizontal[:180] + vertical), encoding="utf-8")
        page = calibrate(program, session, 0)
        check_structure(page, 15)
        assert "Verdict: poor" in text_of(page)
        assert page.find(".//path[@class='gap-mark']") is not None

        session.write_text("".join(rows[:1] + horizontal + vertical[:4]), encoding="utf-8")
        page = calibrate(program, session, 1)
        check_structure(page, 10)
        assert "Why it failed, and what to do" in text_of(page)
        assert len(page.findall(".//ul[@class='reasons']/li")) > 0
    return 0


if __name__ == "__main__":
    sys.exit(main())

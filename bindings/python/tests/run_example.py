#!/usr/bin/env python3
"""Runs the example on its own turn and on a session file, looks at the pictures, and runs the code
of the README.

usage: run_example.py EXAMPLE README
"""

import csv
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import matplotlib.image

sys.path.insert(0, str(pathlib.Path(__file__).parent))

import simulated_pole  # noqa: E402

EXAMPLE, README = sys.argv[1:]


def write_session(path):
    columns = ["set", "time", "incline_x", "incline_y"] + [
        f"mag_{axis}_{which}" for which in "ab" for axis in "xyz"]
    with open(path, "w", newline="", encoding="utf-8") as file:
        rows = csv.writer(file)
        rows.writerow(columns)
        points, _ = simulated_pole.leaning([10.0, 130.0, 250.0], [5.0, 8.0, 12.0])
        for name, samples in zip(("horizontal", "vertical", "measure"),
                                 (*simulated_pole.turns(), points)):
            for sample in samples:
                rows.writerow([name, ":".join(f"{part:02d}" for part in sample["time"]),
                               sample["incline_x"], sample["incline_y"], *sample["magnetic_a"],
                               *sample["magnetic_b"]])


def run_readme(folder):
    codes = re.findall(r"```python\n(.*?)```", pathlib.Path(README).read_text(), re.DOTALL)
    assert codes, "the README has no code"
    os.chdir(folder)
    for code in codes:
        exec(compile(code, README, "exec"), {})


def picture_of(folder, session):
    picture = folder / "turn.png"
    said = subprocess.run([sys.executable, EXAMPLE, str(session), str(picture)], check=True,
                          stdout=subprocess.PIPE, text=True).stdout
    assert "heading errors of" in said, said
    pixels = matplotlib.image.imread(picture)
    picture.unlink()
    return pixels


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    write_session(folder / "survey.csv")
    run_readme(folder)
    for session in ("", folder / "survey.csv"):
        pixels = picture_of(folder, session)
        assert pixels.shape[:2] == (600, 1200), pixels.shape
        # The second colour of the plot, magnetometer B's, is there on both sides.
        orange = (abs(pixels[:, :, :3] - [1.0, 0.498, 0.055]).max(axis=2) < 0.05)
        assert orange[:, :600].sum() > 300 and orange[:, 600:].sum() > 300
    os.chdir("/")

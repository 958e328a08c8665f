#!/usr/bin/env python3
"""Runs the examples: the plot on its own turn and on a session file, with a look at the pictures.

usage: run_example.py PLOT_TURN MEASURE_SESSION
"""

import csv
import math
import pathlib
import re
import subprocess
import sys
import tempfile

import matplotlib.image

sys.path.insert(0, str(pathlib.Path(__file__).parent))

import simulated_pole  # noqa: E402

PLOT_TURN, MEASURE_SESSION = sys.argv[1:]


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


def measure(folder):
    said = subprocess.run([sys.executable, MEASURE_SESSION], check=True, cwd=folder,
                          stdout=subprocess.PIPE, text=True).stdout
    verdict, error, *offsets = re.findall(r"[A-Z]+|-?\d+\.\d+", said)
    assert verdict == "GOOD" and float(error) < 1.0, said
    heights = [float(height) for height in offsets[2::3]]
    leans = [math.degrees(math.acos(-height / 2.0)) for height in heights]
    assert all(abs(lean - made) < 0.1 for lean, made in zip(leans, (5.0, 8.0, 12.0))), said
    assert len(leans) == 3, said


def picture_of(folder, session):
    picture = folder / "turn.png"
    said = subprocess.run([sys.executable, PLOT_TURN, str(session), str(picture)], check=True,
                          stdout=subprocess.PIPE, text=True).stdout
    assert "heading errors of" in said, said
    pixels = matplotlib.image.imread(picture)
    picture.unlink()
    return pixels


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    write_session(folder / "survey.csv")
    measure(folder)
    for session in ("", folder / "survey.csv"):
        pixels = picture_of(folder, session)
        assert pixels.shape[:2] == (600, 1200), pixels.shape
        # The second colour of the plot, magnetometer B's, is there on both sides.
        orange = (abs(pixels[:, :, :3] - [1.0, 0.498, 0.055]).max(axis=2) < 0.05)
        assert orange[:, :600].sum() > 300 and orange[:, 600:].sum() > 300

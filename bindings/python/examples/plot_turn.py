#!/usr/bin/env python3
"""Plots one turn of the pole before and after its correction.

usage: plot_turn.py [SESSION.csv] [PICTURE.png]

Run it as a whole, or cell by cell in an editor that knows "# %%".
"""

# %% [markdown]
# # A turn before and after
# While the pole is turned about its axis, a perfect magnetometer's x and y readings trace a circle
# about the origin. A real one traces an ellipse somewhere else. The calibration finds what turns
# one into the other.

# %% A session: from a file, or a simulated turn of a sensor with errors
import sys

import matplotlib

matplotlib.use("Agg")  # a picture in a file; leave this line out in a notebook
import matplotlib.pyplot as plt
import numpy as np

import tiltpole

session_file, picture = (sys.argv[1:] + ["", ""])[:2]


def simulated():
    """Both turns of a pole in a field of 5000 counts that dips by 60 degrees."""
    draw = np.random.default_rng(4)
    angle = np.radians(np.linspace(1, 361, 360, endpoint=False))
    zero, level = np.zeros_like(angle), np.full_like(angle, -4330.0)

    def samples(field, tilt_x):
        seconds = np.arange(angle.size) // 10
        time = np.column_stack([0 * seconds, seconds // 60, seconds % 60])
        noise = draw.normal(0, 8, (2, *field.shape))
        a = field * [1, 1.15, 0.9] + field[:, [1, 0, 0]] * [0, 0.06, 0.02] + [420, -310, 150]
        b = field * [-1, -0.95, 1.05] + [-150, 90, -60]
        return tiltpole.make_samples(tilt_x, 0.0, a + noise[0], b + noise[1], time)

    horizontal = np.column_stack([2500 * np.cos(angle), 2500 * np.sin(angle), level])
    vertical = np.column_stack([5000 * np.cos(angle), zero, -5000 * np.sin(angle)])
    tilt = np.degrees(np.arcsin(np.sin(angle - np.radians(60))))
    return {"horizontal": samples(horizontal, zero), "vertical": samples(vertical, tilt)}


session = tiltpole.read_session(session_file) if session_file else simulated()

# %% Calibrate, and correct the turn
calibration = tiltpole.calibrate(session["horizontal"], session["vertical"])
raw = session["horizontal"]
corrected = tiltpole.correct_samples(raw, calibration.correction_a, calibration.correction_b)
quality = calibration.quality
print(f"{quality.verdict.name.lower()}: heading errors of "
      f"{quality.a.heading_root_mean_square:.2f} degrees (A) and "
      f"{quality.b.heading_root_mean_square:.2f} degrees (B) are expected")

# %% Plot both
figure, axes = plt.subplots(1, 2, figsize=(10, 5), layout="constrained")
for axis, samples, title in zip(axes, (raw, corrected), ("before", "after")):
    for name in ("a", "b"):
        readings = samples[f"magnetic_{name}"]
        axis.plot(readings[:, 0], readings[:, 1], ".", markersize=3,
                  label=f"magnetometer {name.upper()}")
    axis.axhline(0, color="0.8", linewidth=1, zorder=0)
    axis.axvline(0, color="0.8", linewidth=1, zorder=0)
    axis.set_aspect("equal", "datalim")
    axis.set_title(f"{title} the correction")
    axis.set_xlabel("x [counts]")
    axis.set_ylabel("y [counts]")
axes[0].legend()
figure.savefig(picture or "turn.png", dpi=120)

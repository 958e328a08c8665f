"""Samples of the pole's sensors, whole sessions as NumPy arrays."""

from __future__ import annotations

import csv
import ctypes
import os
from typing import Any, Union

import numpy as np
import numpy.typing as npt

from ._library import call
from .parameters import Correction

#: One sample of the sensor package. Raw readings [counts] and tilts [degrees] are the host's; the
#: headings (``yaw_...``), ``azimuth`` and ``forward`` are written by the library.
SAMPLE = np.dtype([
    ("incline_x", "f8"), ("incline_y", "f8"), ("magnetic_a", "f8", 3), ("magnetic_b", "f8", 3),
    ("yaw_a", "f8"), ("yaw_b", "f8"), ("yaw_y_a", "f8"), ("azimuth", "f8"), ("host_angle", "f8"),
    ("aux", "f8", 7), ("time", "i4", 3), ("forward", "i4"),
])

Samples = npt.NDArray[np.void]


def make_samples(incline_x: npt.ArrayLike, incline_y: npt.ArrayLike, magnetic_a: npt.ArrayLike,
                 magnetic_b: npt.ArrayLike, time: npt.ArrayLike = 0) -> Samples:
    """Samples from columns: tilts of n values [degrees], readings of n x 3 [counts].

    :param time: hours, minutes and seconds, n x 3; the screening reads them
    """
    readings = np.asarray(magnetic_a, dtype=float)
    samples = np.zeros(readings.shape[0], SAMPLE)
    samples["host_angle"] = 90.0
    samples["forward"] = 1
    samples["incline_x"] = incline_x
    samples["incline_y"] = incline_y
    samples["magnetic_a"] = readings
    samples["magnetic_b"] = magnetic_b
    samples["time"] = time
    return samples


def as_samples(values: Any) -> Samples:
    """The values as an array that the library can read: contiguous, of :data:`SAMPLE`."""
    array = np.ascontiguousarray(values)
    if array.dtype != SAMPLE:
        raise TypeError(f"expected an array of tiltpole.SAMPLE, not of {array.dtype}")
    return np.atleast_1d(array)


def address(array: npt.NDArray[Any]) -> ctypes.c_void_p:
    """Where an array's elements stand."""
    return ctypes.c_void_p(array.ctypes.data)


def correct_samples(samples: Samples, correction_a: Correction,
                    correction_b: Correction) -> Samples:
    """A copy of the samples with both readings corrected."""
    corrected = as_samples(samples).copy()
    call("correct_samples", address(corrected), corrected.size, correction_a._struct(),
         correction_b._struct())
    return corrected


def read_session(path: Union[str, os.PathLike[str]]) -> dict[str, Samples]:
    """Reads a session file: CSV with the columns ``set``, ``time``, ``incline_x``, ``incline_y`` and
    ``mag_x_a`` to ``mag_z_b``, in any order; others are passed over.

    :return: the samples of each set, in the file's order
    """
    sets: dict[str, list[dict[str, str]]] = {}
    with open(path, newline="", encoding="utf-8-sig") as file:
        for row in csv.DictReader(file):
            sets.setdefault(row["set"], []).append(row)
    return {name: _samples_of(rows) for name, rows in sets.items()}


def _samples_of(rows: list[dict[str, str]]) -> Samples:
    def column(name: str) -> list[float]:
        return [float(row[name]) for row in rows]

    def reading(which: str) -> npt.NDArray[np.float64]:
        return np.column_stack([column(f"mag_{axis}_{which}") for axis in "xyz"])

    times = [[int(float(part)) for part in row["time"].split(":")] for row in rows]
    return make_samples(column("incline_x"), column("incline_y"), reading("a"), reading("b"), times)

"""From samples of the tilted pole to the positions of its tip."""

from __future__ import annotations

import ctypes
import dataclasses
import enum
import os
from typing import Union

import numpy as np
import numpy.typing as npt

from ._library import CorrectionStruct, Handle, TranslationStruct, Xyh, call, get
from .parameters import Correction, Translation
from .samples import Samples, address, as_samples

Path = Union[str, "os.PathLike[str]"]

_MEASUREMENT = np.dtype([("offset", "f8", 3), ("stationary", "i4"), ("interference", "i4")])


class Magnetometer(enum.IntEnum):
    """One of the two magnetometers; B is mounted half a turn about the pole's axis from A."""

    A = 0
    B = 1


class Solution(enum.IntEnum):
    """The solutions for samples whose headings are known."""

    GEOMETRY_A = 0
    GEOMETRY_B = 1
    MATH = 2


@dataclasses.dataclass(frozen=True)
class Measured:
    """What a session of n samples came to."""

    #: n x 3: the tip's offset from the antenna along heading 0, heading 90 and upwards, in the unit
    #: of the pole length
    offset: npt.NDArray[np.float64]
    #: n: whether the pole stood still
    stationary: npt.NDArray[np.bool_]
    #: n: whether the magnetometers disagreed
    interference: npt.NDArray[np.bool_]
    #: n: the samples with corrected readings and headings
    samples: Samples


class Position(Handle):
    """The parameters of one pole, and what it remembers of the last sample."""

    def __init__(self) -> None:
        super().__init__("position", lambda made: call("position_create", made))

    def correction(self, magnetometer: Magnetometer) -> Correction:
        return Correction._of(get("position_get_correction", CorrectionStruct, self, magnetometer))

    def set_correction(self, magnetometer: Magnetometer, correction: Correction) -> None:
        """Takes a correction and sets the magnetometer's bias angle to 0."""
        call("position_set_correction", self, magnetometer, correction._struct())

    @property
    def translation(self) -> Translation:
        return Translation._of(get("position_get_translation", TranslationStruct, self))

    @translation.setter
    def translation(self, translation: Translation) -> None:
        call("position_set_translation", self, translation._struct())

    def bias_angle(self, magnetometer: Magnetometer) -> float:
        """What is subtracted from a magnetometer's heading [degrees]."""
        return float(get("position_get_bias_angle", ctypes.c_double, self, magnetometer))

    def set_bias_angle(self, magnetometer: Magnetometer, degrees: float) -> None:
        call("position_set_bias_angle", self, magnetometer, degrees)

    def read(self, path: Path) -> None:
        """Reads the parameters from a file; what the file lacks stays as it was."""
        call("position_read", self, os.fspath(path).encode())

    def save(self, path: Path) -> None:
        """Writes the parameters to a file, whole or not at all."""
        call("position_replace", self, os.fspath(path).encode())

    def solve(self, samples: Samples, pole_length: float) -> Measured:
        """Solves the tips of raw samples, in the order in which they were taken.

        The samples given stay as they are.
        """
        solved = as_samples(samples).copy()
        results = np.zeros(solved.size, _MEASUREMENT)
        call("position_solve", self, address(solved), solved.size, pole_length, address(results))
        return Measured(results["offset"].copy(), results["stationary"] != 0,
                        results["interference"] != 0, solved)

    def solve_with_heading(self, sample: Samples, pole_length: float,
                           solution: Solution = Solution.GEOMETRY_A,
                           antenna: tuple[float, float, float] = (0.0, 0.0, 0.0),
                           ) -> tuple[float, float, float]:
        """The tip of one sample whose headings are known."""
        one = as_samples(sample)
        if one.size != 1:
            raise ValueError("expected one sample")
        tip = get("position_solve_with_heading", Xyh, self, solution, ctypes.byref(Xyh(*antenna)),
                  address(one), pole_length)
        return tip.x, tip.y, tip.h


def angle_to_horizontal(incline_x: float, incline_y: float) -> float:
    """The angle between the pole and the horizontal plane [degrees]."""
    return float(get("angle_to_horizontal", ctypes.c_double, incline_x, incline_y))

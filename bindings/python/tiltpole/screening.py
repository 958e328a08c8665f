"""The screening of one turn: how much of the circle is covered, and a clean, even subset."""

from __future__ import annotations

import ctypes
import dataclasses
import enum

import numpy as np
import numpy.typing as npt

from ._library import CenterStruct, Handle, call, get
from .samples import SAMPLE, Samples, address, as_samples


class Turn(enum.IntEnum):
    """About the pole's axis, or about the sensor's y axis."""

    HORIZONTAL = 0
    VERTICAL = 1


@dataclasses.dataclass(frozen=True)
class Center:
    """The circle of a turn [counts]."""

    x: float
    y: float
    z: float
    radius: float


class Screening(Handle):
    """The records of one turn and a selection of them."""

    def __init__(self, turn: Turn) -> None:
        super().__init__("screening", lambda made: call("screening_create", turn, made))

    def add(self, samples: Samples) -> None:
        """Appends samples, in the order in which they were taken."""
        added = as_samples(samples)
        call("screening_add", self, address(added), added.size)

    def clear(self) -> None:
        call("screening_clear", self)

    @property
    def coverage(self) -> int:
        """How much of the circle the records cover [per cent]."""
        return int(get("screening_coverage", ctypes.c_int32, self))

    @property
    def is_covered(self) -> bool:
        """Whether every sector of the circle holds a record."""
        return bool(get("screening_is_covered", ctypes.c_int32, self))

    @property
    def center(self) -> Center | None:
        """The circle; none before the 10th record."""
        center = get("screening_center", CenterStruct, self)
        return Center(center.x, center.y, center.z, center.radius) if center.valid else None

    def filter(self) -> Samples:
        """Selects the usable records, by azimuth.

        :raises NoSolution: when none is left
        """
        call("screening_filter", self)
        return self.selected

    def select(self, wanted: int) -> Samples:
        """Thins the selection to about as many records as wanted."""
        call("screening_select", self, wanted)
        return self.selected

    def is_complete(self) -> bool:
        """Whether no two neighbours in the selection lie more than 60 degrees apart."""
        return bool(get("screening_is_complete", ctypes.c_int32, self))

    @property
    def selected(self) -> Samples:
        """The selected records, with their azimuths."""
        return self._array("screening_selected", SAMPLE)

    @property
    def selected_indices(self) -> npt.NDArray[np.uintp]:
        """Where the selected records stand among all that were added."""
        return self._array("screening_selected_indices", np.dtype(np.uintp))

    @property
    def records(self) -> Samples:
        """All records in the order of their arrival, with their azimuths."""
        return self._array("screening_records", SAMPLE)

    def _array(self, name: str, kind: np.dtype) -> npt.NDArray:
        array = np.zeros(get(name, ctypes.c_size_t, self, None, 0), kind)
        get(name, ctypes.c_size_t, self, address(array), array.size)
        return array

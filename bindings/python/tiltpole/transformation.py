"""The four-parameter transformation of the plane."""

from __future__ import annotations

import dataclasses

import numpy as np
import numpy.typing as npt

from ._library import FourParameterStruct, Handle, call, get
from .samples import address


@dataclasses.dataclass(frozen=True)
class FourParameters:
    """Scale, rotation [radians, counterclockwise], shift, and the centre, which counts for the
    forward direction only."""

    scale: float = 1.0
    rotation: float = 0.0
    offset_x: float = 0.0
    offset_y: float = 0.0
    center_x: float = 0.0
    center_y: float = 0.0


class Transformation(Handle):
    """Estimates a similarity transformation from points known in both systems, and applies it."""

    def __init__(self) -> None:
        super().__init__("transformation", lambda made: call("transformation_create", made))

    @property
    def parameters(self) -> FourParameters:
        struct = get("transformation_get_parameters", FourParameterStruct, self)
        return FourParameters(*(getattr(struct, name) for name, _ in struct._fields_))

    @parameters.setter
    def parameters(self, parameters: FourParameters) -> None:
        call("transformation_set_parameters", self,
             FourParameterStruct(*dataclasses.astuple(parameters)))

    def estimate(self, source: npt.ArrayLike, target: npt.ArrayLike) -> FourParameters:
        """Estimates scale, rotation and shift from n x 2 points in both systems.

        :raises NoSolution: without points
        """
        pairs = np.hstack([_points(source), _points(target)])
        call("transformation_clear_pairs", self)
        call("transformation_add_pairs", self, address(pairs), pairs.shape[0])
        call("transformation_estimate", self)
        return self.parameters

    def forward(self, points: npt.ArrayLike) -> npt.NDArray[np.float64]:
        """The points, n x 2, in the target system."""
        return self._apply("transformation_forward", points)

    def inverse(self, points: npt.ArrayLike) -> npt.NDArray[np.float64]:
        """The points, n x 2, in the source system; the centre is ignored."""
        return self._apply("transformation_inverse", points)

    def _apply(self, name: str, points: npt.ArrayLike) -> npt.NDArray[np.float64]:
        result = _points(points).copy()
        call(name, self, address(result), result.shape[0])
        return result


def _points(points: npt.ArrayLike) -> npt.NDArray[np.float64]:
    array = np.ascontiguousarray(points, dtype=np.float64)
    if array.ndim != 2 or array.shape[1] != 2:
        raise ValueError(f"expected points as n x 2, not {array.shape}")
    return array

"""The parameters of a calibrated pole."""

from __future__ import annotations

import dataclasses

from ._library import CorrectionStruct, TranslationStruct


@dataclasses.dataclass(frozen=True)
class Correction:
    """The correction of one magnetometer::

        X =   x - x0
        Y = -(a x + b y - y0)
        Z = -(c x + d y + e z - z0)
    """

    a: float = 0.0
    b: float = 1.0
    c: float = 0.0
    d: float = 0.0
    e: float = 1.0
    x0: float = 0.0
    y0: float = 0.0
    z0: float = 0.0

    def _struct(self) -> CorrectionStruct:
        return CorrectionStruct(*dataclasses.astuple(self))

    @classmethod
    def _of(cls, struct: CorrectionStruct) -> Correction:
        return cls(*(getattr(struct, field.name) for field in dataclasses.fields(cls)))


@dataclasses.dataclass(frozen=True)
class Translation:
    """The offset between the corrected frames of the two magnetometers [counts]."""

    dx: float = 0.0
    dy: float = 0.0
    dz: float = 0.0

    def _struct(self) -> TranslationStruct:
        return TranslationStruct(self.dx, self.dy, self.dz)

    @classmethod
    def _of(cls, struct: TranslationStruct) -> Translation:
        return cls(struct.dx, struct.dy, struct.dz)

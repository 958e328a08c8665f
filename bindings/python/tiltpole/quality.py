"""The rigorous tip, and how far to trust a point and a calibration."""

from __future__ import annotations

import ctypes
import dataclasses
import enum
from typing import Optional, Sequence

import numpy as np
import numpy.typing as npt

from ._library import (Handle, MagnetometerQualityStruct, PointDeviationsStruct, RangeStruct,
                       ReasonStruct, SummaryStruct, TipOptionsStruct, TurnFiguresStruct, call, get)
from .parameters import Correction, Translation
from .samples import Samples, address, as_samples

#: One rigorous tip: its offset from the antenna, the headings [degrees], tilt and dip.
#: ``status``: 0 solved, 1 plumb, 2 the heading cannot be told, 3 impossible tilts. ``source``:
#: 0 none, 1 magnetometer A, 2 B, 3 both. ``agree``: 1 when both agree.
RIGOROUS_TIP = np.dtype([
    ("offset", "f8", 3), ("heading", "f8"), ("heading_a", "f8"), ("heading_b", "f8"),
    ("heading_difference", "f8"), ("tilt", "f8"), ("dip", "f8"), ("status", "i4"),
    ("source", "i4"), ("agree", "i4"), ("reserved", "i4"),
])

#: The standard deviations of one tip, in the unit of the pole length. ``limit``: 0 the tilts,
#: 1 the heading, 2 the pole length, 3 the antenna, 4 the tip cannot be told.
POINT_QUALITY = np.dtype([
    ("north", "f8"), ("east", "f8"), ("height", "f8"), ("semi_major", "f8"), ("semi_minor", "f8"),
    ("semi_major_azimuth", "f8"), ("from_tilt", "f8"), ("from_heading", "f8"),
    ("from_length", "f8"), ("from_antenna", "f8"), ("heading", "f8"), ("limit", "i4"),
    ("reserved", "i4"),
])

_HEADING_ERROR = np.dtype([("heading", "f8"), ("error", "f8"), ("deviation", "f8")])


@dataclasses.dataclass(frozen=True)
class TipOptions:
    """What is taken for granted about the magnetometers, A and B."""

    bias_angle: tuple[float, float] = (0.0, 0.0)  #: subtracted from each heading [degrees]
    heading_deviation: tuple[float, float] = (1.0, 1.0)  #: standard deviations [degrees]
    largest_heading_difference: float = 5.0  #: headings further apart do not agree [degrees]
    disturbed: tuple[bool, bool] = (False, False)  #: true to leave a magnetometer out

    def _struct(self) -> TipOptionsStruct:
        return TipOptionsStruct(self.bias_angle, self.heading_deviation,
                                self.largest_heading_difference, self.disturbed)


@dataclasses.dataclass(frozen=True)
class PointDeviations:
    """Standard deviations of what a tip is worked out from, beside the headings'."""

    tilt: float = 0.1  #: of each tilt [degrees]
    heading_common: float = 0.0  #: of what both headings share [degrees]
    length: float = 0.001  #: of the pole length
    antenna_plane: float = 0.0  #: of the antenna's north and east
    antenna_height: float = 0.0


class Verdict(enum.IntEnum):
    """On a calibration, from best to worst."""

    GOOD = 0
    USABLE = 1
    POOR = 2
    UNUSABLE = 3


@dataclasses.dataclass(frozen=True)
class Reason:
    """One finding: what, how bad, and what to do about it."""

    code: int  #: which finding; the numbers never change
    weight: Verdict  #: the verdict can be no better than this
    magnetometer: Optional[int]  #: 0 for A, 1 for B, None for both
    turn: Optional[int]  #: 0 for the horizontal turn, 1 for the vertical one, None for both
    sentence: str


@dataclasses.dataclass(frozen=True)
class TurnFigures:
    """One magnetometer in one turn [counts]."""

    centre: tuple[float, float]
    radius_mean: float
    radius_scatter: float
    radius_scatter_largest: float
    out_of_plane_mean: float
    out_of_plane_scatter: float
    out_of_plane_scatter_largest: float
    samples: int
    used: int
    dropped: int

    @classmethod
    def _of(cls, s: TurnFiguresStruct) -> TurnFigures:
        return cls((s.centre_first, s.centre_second), s.radius_mean, s.radius_scatter,
                   s.radius_scatter_largest, s.out_of_plane_mean, s.out_of_plane_scatter,
                   s.out_of_plane_scatter_largest, s.samples, s.used, s.dropped)


@dataclasses.dataclass(frozen=True)
class MagnetometerQuality:
    """One magnetometer's part of the report: expected heading errors [degrees]; each pair is the
    horizontal and the vertical turn."""

    before: tuple[TurnFigures, TurnFigures]
    after: tuple[TurnFigures, TurnFigures]
    heading_mean: float
    heading_deviation: float
    heading_root_mean_square: float
    heading_largest: float
    heading_systematic: float
    heading_noise: float
    heading_tilted: float
    heading_tilted_largest: float
    field_strength: float
    field_strength_vertical: float
    dip: float
    #: the expected error by direction: ``heading``, ``error``, ``deviation``
    heading_errors: npt.NDArray[np.void]

    @classmethod
    def _of(cls, s: MagnetometerQualityStruct, errors: npt.NDArray[np.void]) -> MagnetometerQuality:
        figures = {name: getattr(s, name) for name, *_ in s._fields_[2:]}
        before, after = ((TurnFigures._of(turns[0]), TurnFigures._of(turns[1]))
                         for turns in (s.before, s.after))
        return cls(before=before, after=after, heading_errors=errors, **figures)


@dataclasses.dataclass(frozen=True)
class CalibrationQuality:
    """The report on a calibration; each pair is the horizontal and the vertical turn."""

    verdict: Verdict
    calibrated: bool
    reasons: tuple[Reason, ...]  #: worst first
    a: MagnetometerQuality
    b: MagnetometerQuality
    covered_percent: tuple[float, float]
    samples: tuple[int, int]
    missing: tuple[tuple[tuple[float, float], ...], ...]  #: directions without a sample, clockwise
    heading_difference_mean: float
    heading_difference_deviation: float
    heading_difference_largest: float
    scale_ratio_y: float
    scale_ratio_z: float
    field_strength_ratio: float
    dip_difference: float
    tip_options: TipOptions  #: what the quality suggests for rigorous tips


def solve_rigorous_tips(corrected: Samples, pole_length: float,
                        options: TipOptions = TipOptions()) -> npt.NDArray[np.void]:
    """The tips of samples with corrected readings, as an array of :data:`RIGOROUS_TIP`."""
    samples = as_samples(corrected)
    tips = np.zeros(samples.size, RIGOROUS_TIP)
    call("solve_rigorous_tips", address(samples), samples.size, pole_length, options._struct(),
         address(tips))
    return tips


def judge_points(corrected: Samples, pole_length: float, options: TipOptions = TipOptions(),
                 deviations: PointDeviations = PointDeviations()) -> npt.NDArray[np.void]:
    """The standard deviations of the same tips, as an array of :data:`POINT_QUALITY`."""
    samples = as_samples(corrected)
    qualities = np.zeros(samples.size, POINT_QUALITY)
    call("judge_points", address(samples), samples.size, pole_length, options._struct(),
         PointDeviationsStruct(*dataclasses.astuple(deviations)), address(qualities))
    return qualities


def judge_calibration(horizontal: Samples, vertical: Samples, correction_a: Correction,
                      correction_b: Correction, translation: Translation) -> CalibrationQuality:
    """Judges parameters by the raw samples of both turns."""
    h, v = as_samples(horizontal), as_samples(vertical)
    return _report(Handle("calibration_quality", lambda made: call(
        "judge_calibration", address(h), h.size, address(v), v.size, correction_a._struct(),
        correction_b._struct(), translation._struct(), made)))


def judge_failed_calibration(horizontal: Samples, vertical: Samples,
                             messages: Sequence[str]) -> CalibrationQuality:
    """Says why a calibration failed."""
    h, v = as_samples(horizontal), as_samples(vertical)
    texts = (ctypes.c_char_p * len(messages))(*(text.encode() for text in messages))
    return _report(Handle("calibration_quality", lambda made: call(
        "judge_failed_calibration", address(h), h.size, address(v), v.size, texts, len(messages),
        made)))


def check_parameters(samples: Samples, correction_a: Correction,
                     correction_b: Correction) -> tuple[Reason, ...]:
    """Holds parameters against ordinary raw samples of one place: no reason when they fit."""
    taken = as_samples(samples)
    handle = Handle("calibration_quality", lambda made: call(
        "check_parameters", address(taken), taken.size, correction_a._struct(),
        correction_b._struct(), made))
    return _reasons(handle, get("quality_summary_of", SummaryStruct, handle))


def _report(handle: Handle) -> CalibrationQuality:
    summary = get("quality_summary_of", SummaryStruct, handle)
    plain = {name: getattr(summary, name) for name, kind in summary._fields_
             if kind is ctypes.c_double}
    return CalibrationQuality(
        verdict=Verdict(summary.verdict), calibrated=bool(summary.calibrated),
        reasons=_reasons(handle, summary),
        a=_magnetometer(handle, 0, summary), b=_magnetometer(handle, 1, summary),
        covered_percent=tuple(summary.covered_percent), samples=tuple(summary.samples),
        missing=tuple(_missing(handle, turn, summary) for turn in (0, 1)),
        tip_options=_tip_options(handle), **plain)


def _reasons(handle: Handle, summary: SummaryStruct) -> tuple[Reason, ...]:
    return tuple(_reason(handle, i) for i in range(summary.reasons))


def _reason(handle: Handle, index: int) -> Reason:
    found = get("quality_reason_at", ReasonStruct, handle, index)
    return Reason(found.code, Verdict(found.weight),
                  None if found.magnetometer < 0 else found.magnetometer,
                  None if found.turn < 0 else found.turn, found.sentence.decode())


def _magnetometer(handle: Handle, which: int, summary: SummaryStruct) -> MagnetometerQuality:
    errors = np.zeros(summary.heading_errors[which], _HEADING_ERROR)
    get("quality_heading_errors", ctypes.c_size_t, handle, which, address(errors), errors.size)
    figures = get("quality_magnetometer", MagnetometerQualityStruct, handle, which)
    return MagnetometerQuality._of(figures, errors)


def _missing(handle: Handle, turn: int, summary: SummaryStruct) -> tuple[tuple[float, float], ...]:
    ranges = (get("quality_missing_at", RangeStruct, handle, turn, i)
              for i in range(summary.missing_ranges[turn]))
    return tuple((found.start, found.end) for found in ranges)


def _tip_options(handle: Handle) -> TipOptions:
    options = get("quality_tip_options", TipOptionsStruct, handle)
    disturbed = (bool(options.disturbed[0]), bool(options.disturbed[1]))
    return TipOptions((options.bias_angle[0], options.bias_angle[1]),
                      (options.heading_deviation[0], options.heading_deviation[1]),
                      options.largest_heading_difference, disturbed)

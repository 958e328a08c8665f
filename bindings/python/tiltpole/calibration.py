"""The calibration of the two magnetometers."""

from __future__ import annotations

import ctypes
import dataclasses

from ._library import CorrectionStruct, Handle, TranslationStruct, call
from ._messages import collected_messages
from .errors import CalibrationFailed, NoSolution
from .parameters import Correction, Translation
from .position import Magnetometer, Position
from .quality import CalibrationQuality, judge_calibration, judge_failed_calibration
from .samples import Samples, address, as_samples


@dataclasses.dataclass(frozen=True)
class Calibration:
    """The fitted parameters, and how far to trust them."""

    correction_a: Correction
    correction_b: Correction
    translation: Translation
    quality: CalibrationQuality

    def position(self) -> Position:
        """A pole with these parameters, ready to measure."""
        position = Position()
        position.set_correction(Magnetometer.A, self.correction_a)
        position.set_correction(Magnetometer.B, self.correction_b)
        position.translation = self.translation
        return position


def calibrate(horizontal: Samples, vertical: Samples) -> Calibration:
    """Fits both corrections and the offset between the frames.

    :param horizontal: raw samples of a turn about the pole's axis
    :param vertical: raw samples of a turn about the sensor's y axis
    :raises CalibrationFailed: with the messages of the failing steps and a report that says why
    """
    handle = Handle("calibration", lambda made: call("calibration_create", made))
    turns = [as_samples(horizontal), as_samples(vertical)]
    for turn, samples in enumerate(turns):
        call("calibration_add", handle, turn, address(samples), samples.size)
    with collected_messages() as messages:
        try:
            call("calibration_adjust", handle)
        except NoSolution as failure:
            quality = judge_failed_calibration(*turns, messages)
            raise CalibrationFailed(str(failure), messages, quality) from None
    a, b, translation = CorrectionStruct(), CorrectionStruct(), TranslationStruct()
    call("calibration_result", handle, ctypes.byref(a), ctypes.byref(b), ctypes.byref(translation))
    fitted = Correction._of(a), Correction._of(b), Translation._of(translation)
    return Calibration(*fitted, judge_calibration(*turns, *fitted))

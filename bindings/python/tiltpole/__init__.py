"""Measure with a tilted survey pole: calibrate its magnetometers, solve its tip, and know how far to
trust the point. Whole sessions go in and out as NumPy arrays."""

from . import _messages as _messages
from ._library import library_version
from ._version import __version__
from .calibration import Calibration, calibrate
from .errors import CalibrationFailed, NoSolution, NotFound, ParameterFileError, TiltpoleError
from .parameter_file import ParameterFile, write_parameter_file
from .parameters import Correction, Translation
from .position import Magnetometer, Measured, Position, Solution, angle_to_horizontal
from .quality import (POINT_QUALITY, RIGOROUS_TIP, CalibrationQuality, MagnetometerQuality,
                      PointDeviations, Reason, TipOptions, TurnFigures, Verdict, check_parameters,
                      judge_calibration, judge_failed_calibration, judge_points, solve_rigorous_tips)
from .samples import SAMPLE, correct_samples, make_samples, read_session
from .screening import Center, Screening, Turn
from .transformation import FourParameters, Transformation

__all__ = [
    "Calibration", "CalibrationFailed", "CalibrationQuality", "Center", "Correction",
    "FourParameters", "Magnetometer", "MagnetometerQuality", "Measured", "NoSolution", "NotFound",
    "POINT_QUALITY", "ParameterFile", "ParameterFileError", "PointDeviations", "Position",
    "RIGOROUS_TIP", "Reason", "SAMPLE", "Screening", "Solution", "TiltpoleError", "TipOptions",
    "Transformation", "Translation", "Turn", "TurnFigures", "Verdict", "__version__",
    "angle_to_horizontal", "calibrate", "check_parameters", "correct_samples", "judge_calibration",
    "judge_failed_calibration", "judge_points", "library_version", "make_samples", "read_session",
    "solve_rigorous_tips", "write_parameter_file",
]

"""Loads the library and says what its functions take and give."""

from __future__ import annotations

import ctypes
import pathlib
import sys
import weakref
from ctypes import POINTER, c_char_p, c_double, c_int, c_int32, c_size_t, c_uint32, c_void_p
from typing import Any, Callable, Type

from .errors import raise_for

_NAMES = {"win32": "libtiltpole_c.dll", "darwin": "libtiltpole_c.dylib"}


class Xyh(ctypes.Structure):
    _fields_ = [("x", c_double), ("y", c_double), ("h", c_double)]


class Xy(ctypes.Structure):
    _fields_ = [("x", c_double), ("y", c_double)]


class CorrectionStruct(ctypes.Structure):
    _fields_ = [(name, c_double) for name in ("a", "b", "c", "d", "e", "x0", "y0", "z0")]


class TranslationStruct(ctypes.Structure):
    _fields_ = [("dx", c_double), ("dy", c_double), ("dz", c_double)]


class CenterStruct(ctypes.Structure):
    _fields_ = [("x", c_double), ("y", c_double), ("z", c_double), ("radius", c_double),
                ("valid", c_int32), ("reserved", c_int32)]


class FourParameterStruct(ctypes.Structure):
    _fields_ = [(name, c_double) for name in
                ("scale", "rotation", "offset_x", "offset_y", "center_x", "center_y")]


class TipOptionsStruct(ctypes.Structure):
    _fields_ = [("bias_angle", c_double * 2), ("heading_deviation", c_double * 2),
                ("largest_heading_difference", c_double), ("disturbed", c_int32 * 2)]


class PointDeviationsStruct(ctypes.Structure):
    _fields_ = [(name, c_double) for name in
                ("tilt", "heading_common", "length", "antenna_plane", "antenna_height")]


class SummaryStruct(ctypes.Structure):
    _fields_ = [("heading_difference_mean", c_double), ("heading_difference_deviation", c_double),
                ("heading_difference_largest", c_double), ("scale_ratio_y", c_double),
                ("scale_ratio_z", c_double), ("field_strength_ratio", c_double),
                ("dip_difference", c_double), ("covered_percent", c_double * 2),
                ("samples", c_int32 * 2), ("verdict", c_int32), ("calibrated", c_int32),
                ("reasons", c_uint32), ("missing_ranges", c_uint32 * 2),
                ("heading_errors", c_uint32 * 2), ("reserved", c_uint32)]


class TurnFiguresStruct(ctypes.Structure):
    _fields_ = [(name, c_double) for name in
                ("centre_first", "centre_second", "radius_mean", "radius_scatter",
                 "radius_scatter_largest", "out_of_plane_mean", "out_of_plane_scatter",
                 "out_of_plane_scatter_largest")] + [
                    ("samples", c_int32), ("used", c_int32), ("dropped", c_int32),
                    ("reserved", c_int32)]


class MagnetometerQualityStruct(ctypes.Structure):
    _fields_ = [("before", TurnFiguresStruct * 2), ("after", TurnFiguresStruct * 2)] + [
        (name, c_double) for name in
        ("heading_mean", "heading_deviation", "heading_root_mean_square", "heading_largest",
         "heading_systematic", "heading_noise", "heading_tilted", "heading_tilted_largest",
         "field_strength", "field_strength_vertical", "dip")]


class ReasonStruct(ctypes.Structure):
    _fields_ = [("code", c_int32), ("weight", c_int32), ("magnetometer", c_int32),
                ("turn", c_int32), ("sentence", c_char_p)]


class RangeStruct(ctypes.Structure):
    _fields_ = [("start", c_double), ("end", c_double)]


MESSAGE_HANDLER = ctypes.CFUNCTYPE(None, c_char_p, c_char_p, c_int, c_void_p)

# Arrays are passed by their addresses; a handle is a pointer to nothing that Python looks into.
_HANDLE = _ARRAY = c_void_p
_FUNCTIONS: dict[str, list[Any]] = {
    "set_message_handler": [MESSAGE_HANDLER, c_void_p],
    "correct_samples": [_ARRAY, c_size_t, POINTER(CorrectionStruct), POINTER(CorrectionStruct)],
    "position_create": [POINTER(_HANDLE)],
    "position_set_correction": [_HANDLE, c_int, POINTER(CorrectionStruct)],
    "position_get_correction": [_HANDLE, c_int, POINTER(CorrectionStruct)],
    "position_set_translation": [_HANDLE, POINTER(TranslationStruct)],
    "position_get_translation": [_HANDLE, POINTER(TranslationStruct)],
    "position_set_bias_angle": [_HANDLE, c_int, c_double],
    "position_get_bias_angle": [_HANDLE, c_int, POINTER(c_double)],
    "position_read": [_HANDLE, c_char_p],
    "position_save": [_HANDLE, c_char_p],
    "position_replace": [_HANDLE, c_char_p],
    "position_solve": [_HANDLE, _ARRAY, c_size_t, c_double, _ARRAY],
    "position_solve_with_heading": [_HANDLE, c_int, POINTER(Xyh), _ARRAY, c_double, POINTER(Xyh)],
    "angle_to_horizontal": [c_double, c_double, POINTER(c_double)],
    "parameter_file_create": [POINTER(_HANDLE)],
    "parameter_file_open_read": [_HANDLE, c_char_p],
    "parameter_file_open_write": [_HANDLE, c_char_p],
    "parameter_file_close": [_HANDLE],
    "parameter_file_read_double": [_HANDLE, c_char_p, POINTER(c_double)],
    "parameter_file_read_int": [_HANDLE, c_char_p, POINTER(c_int32)],
    "parameter_file_read_string": [_HANDLE, c_char_p, c_char_p, c_size_t, POINTER(c_size_t)],
    "parameter_file_write_double": [_HANDLE, c_char_p, c_double],
    "parameter_file_write_int": [_HANDLE, c_char_p, c_int32],
    "parameter_file_write_string": [_HANDLE, c_char_p, c_char_p],
    "calibration_create": [POINTER(_HANDLE)],
    "calibration_add": [_HANDLE, c_int, _ARRAY, c_size_t],
    "calibration_clear": [_HANDLE, c_int],
    "calibration_adjust": [_HANDLE],
    "calibration_result": [_HANDLE, POINTER(CorrectionStruct), POINTER(CorrectionStruct),
                           POINTER(TranslationStruct)],
    "screening_create": [c_int, POINTER(_HANDLE)],
    "screening_add": [_HANDLE, _ARRAY, c_size_t],
    "screening_clear": [_HANDLE],
    "screening_coverage": [_HANDLE, POINTER(c_int32)],
    "screening_is_covered": [_HANDLE, POINTER(c_int32)],
    "screening_center": [_HANDLE, POINTER(CenterStruct)],
    "screening_filter": [_HANDLE],
    "screening_select": [_HANDLE, c_int32],
    "screening_is_complete": [_HANDLE, POINTER(c_int32)],
    "screening_selected": [_HANDLE, _ARRAY, c_size_t, POINTER(c_size_t)],
    "screening_selected_indices": [_HANDLE, _ARRAY, c_size_t, POINTER(c_size_t)],
    "screening_records": [_HANDLE, _ARRAY, c_size_t, POINTER(c_size_t)],
    "tip_options_default": [POINTER(TipOptionsStruct)],
    "solve_rigorous_tips": [_ARRAY, c_size_t, c_double, POINTER(TipOptionsStruct), _ARRAY],
    "judge_points": [_ARRAY, c_size_t, c_double, POINTER(TipOptionsStruct),
                     POINTER(PointDeviationsStruct), _ARRAY],
    "judge_calibration": [_ARRAY, c_size_t, _ARRAY, c_size_t, POINTER(CorrectionStruct),
                          POINTER(CorrectionStruct), POINTER(TranslationStruct), POINTER(_HANDLE)],
    "judge_failed_calibration": [_ARRAY, c_size_t, _ARRAY, c_size_t, POINTER(c_char_p), c_size_t,
                                 POINTER(_HANDLE)],
    "check_parameters": [_ARRAY, c_size_t, POINTER(CorrectionStruct), POINTER(CorrectionStruct),
                         POINTER(_HANDLE)],
    "quality_summary_of": [_HANDLE, POINTER(SummaryStruct)],
    "quality_magnetometer": [_HANDLE, c_int, POINTER(MagnetometerQualityStruct)],
    "quality_heading_errors": [_HANDLE, c_int, _ARRAY, c_size_t, POINTER(c_size_t)],
    "quality_reason_at": [_HANDLE, c_size_t, POINTER(ReasonStruct)],
    "quality_missing_at": [_HANDLE, c_int, c_size_t, POINTER(RangeStruct)],
    "quality_tip_options": [_HANDLE, POINTER(TipOptionsStruct)],
    "transformation_create": [POINTER(_HANDLE)],
    "transformation_add_pairs": [_HANDLE, _ARRAY, c_size_t],
    "transformation_clear_pairs": [_HANDLE],
    "transformation_estimate": [_HANDLE],
    "transformation_set_parameters": [_HANDLE, POINTER(FourParameterStruct)],
    "transformation_get_parameters": [_HANDLE, POINTER(FourParameterStruct)],
    "transformation_forward": [_HANDLE, _ARRAY, c_size_t],
    "transformation_inverse": [_HANDLE, _ARRAY, c_size_t],
}
_DESTROYERS = ("position", "parameter_file", "calibration", "screening", "calibration_quality",
               "transformation")


def _load() -> ctypes.CDLL:
    beside = pathlib.Path(__file__).with_name(_NAMES.get(sys.platform, "libtiltpole_c.so"))
    # Without a library of its own the package uses the one that the system has installed.
    library = ctypes.CDLL(str(beside) if beside.exists() else "libtiltpole.so.1")
    library.tiltpole_version.restype = c_char_p
    library.tiltpole_last_error.restype = c_char_p
    for name, arguments in _FUNCTIONS.items():
        function = getattr(library, f"tiltpole_{name}")
        function.argtypes = arguments
        function.restype = c_int
    for name in _DESTROYERS:
        function = getattr(library, f"tiltpole_{name}_destroy")
        function.argtypes = [_HANDLE]
        function.restype = None
    return library


_library = _load()


def library_version() -> str:
    """The version of the loaded library."""
    return _library.tiltpole_version().decode()


def call(name: str, *arguments: Any) -> None:
    """Calls a function; raises what its result means."""
    result = getattr(_library, f"tiltpole_{name}")(*arguments)
    if result != 0:
        raise_for(result, _library.tiltpole_last_error().decode())


def get(name: str, kind: Type[Any], *arguments: Any) -> Any:
    """Calls a function that fills its last argument, and gives that."""
    value = kind()
    call(name, *arguments, ctypes.byref(value))
    return value.value if isinstance(value, (c_double, c_int32, c_size_t)) else value


class Handle:
    """An object of the library, destroyed with its Python object."""

    def __init__(self, kind: str, make: Callable[..., None]) -> None:
        pointer = c_void_p()
        make(ctypes.byref(pointer))
        self._as_parameter_ = pointer
        weakref.finalize(self, getattr(_library, f"tiltpole_{kind}_destroy"), pointer)

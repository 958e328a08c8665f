"""The text file of entries in which a host keeps parameters of its own."""

from __future__ import annotations

import ctypes
import os
from typing import Mapping, Union

from ._library import Handle, call, get

Entry = Union[str, int, float]


class ParameterFile(Handle):
    """A file that was read: entries by their keys."""

    def __init__(self, path: Union[str, os.PathLike[str]]) -> None:
        super().__init__("parameter_file", lambda made: call("parameter_file_create", made))
        call("parameter_file_open_read", self, os.fspath(path).encode())

    def read_float(self, key: str) -> float:
        """An entry's number; text that is none reads as 0.

        :raises NotFound: when there is no such entry, or it is empty
        """
        return float(get("parameter_file_read_double", ctypes.c_double, self, key.encode()))

    def read_int(self, key: str) -> int:
        """An entry's integer; text that is none reads as 0."""
        return int(get("parameter_file_read_int", ctypes.c_int32, self, key.encode()))

    def read_string(self, key: str) -> str:
        """An entry's text."""
        size = get("parameter_file_read_string", ctypes.c_size_t, self, key.encode(), None, 0)
        text = ctypes.create_string_buffer(size + 1)
        get("parameter_file_read_string", ctypes.c_size_t, self, key.encode(), text, size + 1)
        return text.value.decode()


def write_parameter_file(path: Union[str, os.PathLike[str]], entries: Mapping[str, Entry]) -> None:
    """Writes entries to a file, replacing its whole content: floats with ten digits after the
    point."""
    file = Handle("parameter_file", lambda made: call("parameter_file_create", made))
    call("parameter_file_open_write", file, os.fspath(path).encode())
    for key, value in entries.items():
        if isinstance(value, str):
            call("parameter_file_write_string", file, key.encode(), value.encode())
        elif isinstance(value, int):
            call("parameter_file_write_int", file, key.encode(), value)
        else:
            call("parameter_file_write_double", file, key.encode(), value)
    call("parameter_file_close", file)

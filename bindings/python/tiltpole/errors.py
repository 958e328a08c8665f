"""What can go wrong."""

from __future__ import annotations

from typing import TYPE_CHECKING, NoReturn

if TYPE_CHECKING:
    from .quality import CalibrationQuality


class TiltpoleError(Exception):
    """Something that the library could not do; the text says what was wrong."""


class ParameterFileError(TiltpoleError, OSError):
    """A file could not be read or written."""


class NotFound(TiltpoleError, LookupError):
    """There is no such entry or element."""


class NoSolution(TiltpoleError):
    """The data does not lead to a result."""


class CalibrationFailed(NoSolution):
    """The samples could not be calibrated."""

    def __init__(self, text: str, messages: list[str], quality: CalibrationQuality) -> None:
        super().__init__(text)
        #: what the failing steps reported, in order
        self.messages = messages
        #: why it failed and what to do, see :attr:`CalibrationQuality.reasons`
        self.quality = quality


def raise_for(result: int, text: str) -> NoReturn:
    """Raises what a result of the library other than 0 stands for."""
    if result == 2:
        raise ValueError(text)
    if result == 3:
        raise MemoryError(text)
    raise {4: ParameterFileError, 5: NotFound, 6: NoSolution}.get(result, TiltpoleError)(text)

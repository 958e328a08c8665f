"""The library's messages: collected by whoever waits for them, else logged."""

from __future__ import annotations

import contextlib
import logging
import threading
from typing import Iterator, Optional

from ._library import MESSAGE_HANDLER, call

_logger = logging.getLogger("tiltpole")
_collecting = threading.local()


def _take(text: bytes, title: bytes, icon: int, user: Optional[int]) -> None:
    collected = getattr(_collecting, "messages", None)
    if collected is None:
        _logger.warning("%s", text.decode())
    else:
        collected.append(text.decode())


# The library keeps the address: the callback must live as long as the process.
_handler = MESSAGE_HANDLER(_take)
call("set_message_handler", _handler, None)


@contextlib.contextmanager
def collected_messages() -> Iterator[list[str]]:
    """Gives the list that this thread's messages go to while the block runs."""
    before = getattr(_collecting, "messages", None)
    _collecting.messages = []
    try:
        yield _collecting.messages
    finally:
        _collecting.messages = before

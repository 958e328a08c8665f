#!/usr/bin/env python3
"""What somebody at a terminal sees of a long session being read: a line of progress, wiped at the
end. Whoever keeps standard error in a file sees nothing of it. Ends with 77 where no terminal can be
had."""

import os
import pty
import subprocess
import sys
import tempfile
import threading
import time

HEADER = "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n"
ROWS = "measure,08:00:00,1,2,2000,500,-4500,-2000,-500,-4500\n" * 8192


def feed(stream) -> None:
    """Two helpings with a pause that outlasts the time between two updates."""
    stream.write((HEADER + ROWS).encode())
    stream.flush()
    time.sleep(0.5)
    stream.write(ROWS.encode())
    stream.close()


def read_all(terminal: int) -> bytes:
    seen = b""
    while True:
        try:
            part = os.read(terminal, 4096)
        except OSError:  # how a terminal without a writer ends on Linux
            return seen
        if not part:
            return seen
        seen += part


def measure(program: str, folder: str, error) -> subprocess.Popen:
    return subprocess.Popen([program, "measure", "-", "--pole-length", "2", "-o", "tips.csv"],
                            cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                            stderr=error)


def on_a_terminal(program: str, folder: str, ours: int, theirs: int) -> bytes:
    run = measure(program, folder, theirs)
    os.close(theirs)
    feeder = threading.Thread(target=feed, args=(run.stdin,))
    feeder.start()
    seen = read_all(ours)
    feeder.join()
    assert run.wait() == 0
    return seen


def in_a_pipe(program: str, folder: str) -> bytes:
    run = measure(program, folder, subprocess.PIPE)
    feeder = threading.Thread(target=feed, args=(run.stdin,))
    feeder.start()
    seen = run.stderr.read()
    feeder.join()
    assert run.wait() == 0
    return seen


def main() -> int:
    program = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder:
        seen = in_a_pipe(program, folder)
        assert b"rows" not in seen and b"\x1b" not in seen, seen
        try:
            ours, theirs = pty.openpty()
        except OSError as error:
            print(f"skipped: no pseudo-terminal can be had here: {error}")
            return 77
        seen = on_a_terminal(program, folder, ours, theirs)
        assert b"\rmeasure: " in seen and b" rows\x1b[K" in seen, seen
        assert seen.endswith(b"\r\x1b[K"), seen
    return 0


if __name__ == "__main__":
    sys.exit(main())

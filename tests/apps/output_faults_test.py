#!/usr/bin/env python3
"""The program's outputs while the medium, the permissions or the folder fail: exit status 2 and a
line that names the output, the old file as it was, and nothing left beside it."""

import glob
import os
import resource
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
HEADER = "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n"
# More than the program reads in one go, so that it begins its output before the last row comes.
ROW_COUNT = 2000
ROWS = "measure,08:00:00,1,2,2000,500,-4500,-2000,-500,-4500\n" * ROW_COUNT
PAIRS = "source_x,source_y,target_x,target_y\n" + "".join(
    f"{i},{i * i},{2 * i},{2 * i * i}\n" for i in range(200))
POINTS = "x,y\n" + "1,2\n" * 200

# What a command writes to the place OUT, by a name for the message of a test that fails.
OUTPUTS = {
    "simulate": "simulate --points 50 -o OUT",
    "simulate --true-params": "simulate --points 50 --true-params OUT",
    "calibrate": "calibrate session.csv -o OUT",
    "calibrate --report": "calibrate session.csv -o fitted.txt --report OUT",
    "measure": "measure session.csv --pole-length 2 -o OUT",
    "screen": "screen session.csv --set vertical -o OUT",
    "transform": "transform pairs.csv -o OUT",
    "transform --points": "transform pairs.csv --points points.csv -o OUT",
    "transform --residuals": "transform pairs.csv --points points.csv --residuals OUT",
}
DRAWINGS = {
    "draw compass": "draw compass -o OUT",
    "draw gauges": "draw gauges -o OUT",
    "draw plot": "draw plot session.csv -o OUT",
}
# What a command prints: rows, or a summary while the rows go to a file.
PRINTED = [
    "--help", "--version", "measure --help", "params fitted.txt", "params fitted.txt --json",
    "simulate --points 50", "measure session.csv --pole-length 2",
    "measure session.csv --pole-length 2 -o rows.csv", "calibrate session.csv -o fitted.txt",
    "calibrate session.csv -o fitted.txt --report -", "screen session.csv --set vertical",
    "screen session.csv --set vertical -o rows.csv --json", "transform pairs.csv",
    "transform pairs.csv -o rows.csv",
]


def run(folder, command, output="out", **how):
    arguments = [output if word == "OUT" else word for word in command.split()]
    how = {"stdout": subprocess.PIPE, **how}
    return subprocess.run([PROGRAM, *arguments], cwd=folder, stdin=subprocess.DEVNULL,
                          stderr=subprocess.PIPE, text=True, errors="replace", check=False, **how)


def limit_files_to(size):
    """For a child: a file that would grow beyond so many bytes takes no more, as on a full disk."""
    return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


class OutputFaults(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        for name, text in (("pairs.csv", PAIRS), ("points.csv", POINTS), ("out", "old")):
            self.write(name, text)
        self.assertEqual(run(self.folder, "simulate --points 50 -o session.csv").returncode, 0)
        self.assertEqual(run(self.folder, "calibrate session.csv -o fitted.txt").returncode, 0)
        can_draw = run(self.folder, "draw --help").returncode == 0
        self.outputs = {**OUTPUTS, **(DRAWINGS if can_draw else {})}

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
            file.write(text)

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()

    def expect_failure(self, done, message):
        self.assertEqual(done.returncode, 2, done.stderr)
        self.assertIn(message, done.stderr)

    def expect_old_file_alone(self):
        self.assertEqual(self.read("out"), b"old")
        self.assertEqual(glob.glob(os.path.join(self.folder, ".*")), [])

    @unittest.skipUnless(os.path.exists("/dev/full"), "this system has no /dev/full")
    def test_a_full_device_as_output_is_told(self):
        for name, command in self.outputs.items():
            with self.subTest(name):
                done = run(self.folder, command, output="/dev/full")
                self.expect_failure(done, "tiltpole: /dev/full: cannot be written to its end")
                self.assertTrue(stat.S_ISCHR(os.stat("/dev/full").st_mode))

    @unittest.skipUnless(os.path.exists("/dev/full"), "this system has no /dev/full")
    def test_a_full_device_as_standard_output_is_told(self):
        for command in PRINTED:
            with self.subTest(command), open("/dev/full", "w", encoding="utf-8") as full:
                self.expect_failure(run(self.folder, command, stdout=full),
                                    "tiltpole: standard output: cannot be written to its end")

    def test_a_closed_standard_output_is_told(self):
        for command in PRINTED:
            with self.subTest(command):
                self.expect_failure(
                    run(self.folder, command, stdout=None, preexec_fn=lambda: os.close(1)),
                    "tiltpole: standard output: cannot be written to its end")

    def test_an_output_that_is_cut_leaves_the_old_file(self):
        for name, command in self.outputs.items():
            with self.subTest(name):
                self.assertEqual(run(self.folder, command, output="whole").returncode, 0)
                half = len(self.read("whole")) // 2
                done = run(self.folder, command, preexec_fn=limit_files_to(half))
                self.expect_failure(done, "tiltpole: out: cannot be written to its end")
                self.expect_old_file_alone()

    def test_an_output_of_which_nothing_can_be_written_leaves_the_old_file(self):
        for name, command in self.outputs.items():
            with self.subTest(name):
                done = run(self.folder, command, preexec_fn=limit_files_to(0))
                self.expect_failure(done, ": cannot be written to its end")
                self.expect_old_file_alone()

    def test_an_output_in_a_folder_that_is_not_there_is_told(self):
        for name, command in self.outputs.items():
            with self.subTest(name):
                done = run(self.folder, command, output="missing/out")
                self.expect_failure(done, "tiltpole: missing/out: cannot be opened for writing")
                self.assertFalse(os.path.exists(os.path.join(self.folder, "missing")))


class WhileItRuns(unittest.TestCase):
    """Measures rows that come slowly enough for something to happen to the folder meanwhile."""

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.old = os.path.join(self.folder, "out.csv")
        with open(self.old, "w", encoding="utf-8") as file:
            file.write("old")
        self.start()

    def start(self, **how):
        self.program = subprocess.Popen(
            [PROGRAM, "measure", "-", "--pole-length", "2", "-o", self.old], **how,
            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.program.stdin.write(HEADER + ROWS)
        self.program.stdin.flush()
        self.pending = self.wait_for_pending()

    def wait_for_pending(self):
        for _ in range(1000):
            found = glob.glob(os.path.join(self.folder, ".tiltpole-*.part"))
            if found:
                return found[0]
            time.sleep(0.01)
        self.fail("the program has begun no output")
        return ""

    def end(self):
        _, err = self.program.communicate(ROWS)
        return self.program.returncode, err

    def test_what_was_written_is_put_in_place(self):
        self.assertEqual(self.end()[0], 0)
        with open(self.old, encoding="utf-8") as file:
            self.assertEqual(len(file.readlines()), 1 + 2 * ROW_COUNT)
        self.assertEqual(os.listdir(self.folder), ["out.csv"])

    def test_an_old_file_removed_meanwhile_comes_back_as_the_new_one(self):
        os.remove(self.old)
        self.assertEqual(self.end()[0], 0)
        self.assertEqual(os.listdir(self.folder), ["out.csv"])

    def test_a_pending_file_removed_meanwhile_is_told_and_leaves_the_old_file(self):
        os.remove(self.pending)
        status, err = self.end()
        self.assertEqual(status, 2)
        self.assertIn(f"tiltpole: {self.old}: cannot be written to its end", err)
        with open(self.old, encoding="utf-8") as file:
            self.assertEqual(file.read(), "old")

    def test_a_folder_removed_meanwhile_is_told_and_stays_away(self):
        shutil.rmtree(self.folder)
        status, err = self.end()
        self.assertEqual(status, 2)
        self.assertIn("cannot be written to its end", err)
        self.assertFalse(os.path.exists(self.folder))

    def test_a_folder_that_took_the_name_meanwhile_is_told_and_nothing_is_left(self):
        os.remove(self.old)
        os.mkdir(self.old)
        status, err = self.end()
        self.assertEqual(status, 2)
        self.assertIn("cannot be put in place: ", err)
        self.assertEqual(os.listdir(self.folder), ["out.csv"])
        self.assertEqual(os.listdir(self.old), [])

    def expect_old_file_alone(self):
        with open(self.old, encoding="utf-8") as file:
            self.assertEqual(file.read(), "old")
        self.assertEqual(os.listdir(self.folder), ["out.csv"])

    def test_a_program_that_a_signal_ends_leaves_the_old_file_alone(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                self.program.send_signal(number)
                self.program.communicate()
                self.assertEqual(self.program.returncode, -number)
                self.expect_old_file_alone()
                self.start()
        self.end()

    def test_a_signal_that_the_shell_has_ignored_ends_nothing(self):
        self.end()
        self.start(preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.program.send_signal(signal.SIGHUP)
        self.assertEqual(self.end()[0], 0)

    def test_a_program_that_is_killed_leaves_the_old_file(self):
        self.program.kill()
        self.program.communicate()
        with open(self.old, encoding="utf-8") as file:
            self.assertEqual(file.read(), "old")


if __name__ == "__main__":
    unittest.main()

"""The keyboard in the middle of a long run of the real libraries, on a terminal of its own."""

import fcntl
import json
import os
import pty
import select
import subprocess
import tempfile
import termios
import unittest

import job_files
from harness import BIN, EXECUTABLE, WINDOWS, SystemTest

ESCAPE = b"\x1b"
CONTROL_C = b"\x03"


def take_terminal():
    """Makes standard input the controlling terminal of the new session: keys become signals."""
    fcntl.ioctl(0, termios.TIOCSCTTY, 0)


def read_shown(master):
    """What has appeared on the terminal; nothing when nothing does for a while."""
    ready, _, _ = select.select([master], [], [], 0.2)
    return os.read(master, 1000) if ready else b""


@unittest.skipIf(WINDOWS, "no key reaches a program under the emulator from a terminal of ours")
class CancelTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.source = self.file("torus.iff")
        self.out = self.file("out")
        with open(self.out + ".iff", "wb") as file:
            file.write(b"of an earlier run")
        with open(self.out + ".curves", "wb") as file:
            file.write(b"of an earlier run")

    def run_and_press(self, key, *arguments):
        """The exit code, the report, what appeared on the terminal, and its mode before and
        after."""
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        self.addCleanup(os.close, slave)
        mode_before = termios.tcgetattr(slave)
        with tempfile.TemporaryFile() as out:
            process = subprocess.Popen(
                [os.path.join(BIN, EXECUTABLE), "--json", *arguments], env=self.environment, stdin=slave, stdout=out, stderr=slave,
                start_new_session=True, preexec_fn=take_terminal)
            shown = b""
            while b"%" not in shown:
                self.assertIsNone(process.poll(), "ended before its bar appeared")
                shown += read_shown(master)
            mode_while = termios.tcgetattr(slave)
            os.write(master, key)
            code = process.wait(timeout=120)
            out.seek(0)
            report = json.loads(out.read())
        while more := read_shown(master):
            shown += more
        self.assertNotEqual(mode_while, mode_before)
        self.assertEqual(termios.tcgetattr(slave), mode_before)
        return code, report, shown.decode()

    def assert_stopped(self, key, flag, caption, *arguments):
        before = self.contents(self.folder)
        code, report, shown = self.run_and_press(key, *arguments)
        self.assertEqual(code, 3)
        self.assertIs(report["cancelled"], True)
        self.assertIs(report["flag"], flag)
        self.assertEqual(report["reason"], "stopped by the user")
        self.assertEqual(report["files_written"], [])
        self.assertNotIn("facets_out", report)
        self.assertNotIn("curves", report)
        self.assertIn(caption, shown)
        # The message takes the place of the bar.
        self.assertTrue(shown.endswith("\r\x1b[Kqzhost: stopped by the user\r\n"), shown)
        self.assertEqual(self.contents(self.folder), before)
        self.assert_nothing_temporary_is_left()


class CancelHeal(CancelTest):
    def setUp(self):
        super().setUp()
        # A second's work or more is left when the first percentage appears.
        job_files.write_holed_torus(self.source, 1000, 700, 97)
        self.arguments = ("heal", self.source, self.out + ".iff", "--tolerance", "0.0001")

    def test_escape_stops_it_and_the_older_file_stays(self):
        self.assert_stopped(ESCAPE, False, "Healing", *self.arguments)

    def test_control_c_stops_it_and_the_older_file_stays(self):
        self.assert_stopped(CONTROL_C, False, "Healing", *self.arguments)


class CancelOutlinesAndOffset(CancelTest):
    """The flag of the last two is true when the stop comes once the surface has been loaded."""

    def write_torus(self, count, count_around):
        job_files.write_holed_torus(self.source, count, count_around, count * count_around + 1)

    def test_silhouette(self):
        job_files.write_straws(self.source, 1500)
        self.assert_stopped(ESCAPE, False, "Tracing", "silhouette", self.source,
                            self.out + ".curves", "--distance", "0")

    def test_spun_outline(self):
        self.write_torus(300, 300)
        self.assert_stopped(CONTROL_C, True, "Tracing", "spin-silhouette", self.source,
                            self.out + ".curves", "--distance", "0.0001")

    def test_offset(self):
        self.write_torus(150, 100)
        self.assert_stopped(ESCAPE, True, "Offsetting", "offset", self.source, self.out + ".iff",
                            "--distance", "0.3", "--angle", "1")

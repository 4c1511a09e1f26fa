"""The built program in a job of its own: how it is run, and what it leaves behind."""

import json
import os
import shutil
import subprocess
import tempfile
import unittest

import job_files

BIN = os.environ["QZ_BIN"]
TESTS = os.environ["QZ_TESTS_BIN"]
EMULATOR = [word for word in os.environ.get("QZ_EMULATOR", "").split(";") if word]
WINDOWS = os.environ["QZ_WINDOWS"] == "1"
EXECUTABLE = "qzhost.exe" if WINDOWS else "qzhost"
TEST_ADDIN = os.path.join(TESTS, "TestAddIn.dll" if WINDOWS else "TestAddIn.so")


def spelled(path):
    """The path as the program's own system spells it; an emulator shows the root as drive Z."""
    return "Z:" + path.replace("/", "\\") if EMULATOR else path


# What the emulator says when its server hung up before the program had its first thread.
TURNED_AWAY = "wine client error:0: recvmsg: Connection reset by peer"


class Run:
    """A finished program. Its output goes to files, not pipes: an emulator's server, which outlives
    the program, holds the pipes open and would be waited for."""

    def __init__(self, command, **options):
        self.run(command, options)
        if EMULATOR and self.err.strip() == TURNED_AWAY and not self.out:
            self.run(command, options)

    def run(self, command, options):
        with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
            completed = subprocess.run(command, timeout=120, stdin=subprocess.DEVNULL, stdout=out,
                                       stderr=err, **options)
            out.seek(0)
            err.seek(0)
            self.code = completed.returncode
            self.out = out.read().decode("utf-8", "replace")
            self.err = err.read().decode("utf-8", "replace")

    def object(self):
        return json.loads(self.out)


class SystemTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="qzhost-system-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.job = os.path.join(self.folder, "Part7")
        job_files.write_slot_job(self.job)
        self.environment = dict(os.environ, QZHOST_CONFIG=os.path.join(self.folder, "none.ini"))
        self.environment.pop("QZ_KERNEL_LOG", None)

    def qzhost(self, *arguments, bin_directory=BIN, addin=None, **options):
        environment = dict(self.environment)
        command = EMULATOR + [os.path.join(bin_directory, EXECUTABLE)]
        if addin is not None:
            environment["QZ_TEST_ADDIN"] = addin
            command += ["--addin", spelled(TEST_ADDIN)]
        if WINDOWS:
            # The test add-in lies elsewhere and imports from the program's own libraries.
            environment["WINEPATH"] = bin_directory
            environment["PATH"] = bin_directory + os.pathsep + environment["PATH"]
        return Run(command + list(arguments), env=environment, **options)

    def file(self, name):
        """Of the test's own folder, beside the job."""
        return os.path.join(self.folder, name)

    def use_own_temporary_directory(self):
        """What the program leaves behind there can then be told. An emulator takes no such wish."""
        self.temporary = self.file("temporary")
        os.mkdir(self.temporary)
        if not EMULATOR:
            self.environment.update(TMPDIR=self.temporary, TMP=self.temporary, TEMP=self.temporary)

    def assert_nothing_temporary_is_left(self):
        self.assertEqual(os.listdir(self.temporary), [])

    def path(self, name):
        return os.path.join(self.job, name)

    def contents(self, directory=None):
        directory = directory or self.job
        found = {}
        for name in sorted(os.listdir(directory)):
            if os.path.isfile(os.path.join(directory, name)):
                with open(os.path.join(directory, name), "rb") as file:
                    found[name] = file.read()
        return found

    def assert_one_line(self, text, *parts):
        lines = text.splitlines()
        self.assertEqual(len(lines), 1, text)
        for part in parts:
            self.assertIn(part, lines[0])

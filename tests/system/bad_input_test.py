"""What qzhost says of input, places and command lines that will not do, and what it leaves alone."""

import os
import shutil
import subprocess
import unittest

import job_files
from harness import BIN, EXECUTABLE, WINDOWS, SystemTest, spelled


class BadInput(SystemTest):
    def test_missing_job_directory(self):
        run = self.qzhost("sweep", spelled(os.path.join(self.folder, "none")))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "none", "no such job directory")

    def test_file_in_place_of_the_job_directory(self):
        run = self.qzhost("sweep", spelled(self.path("StockModelInput.tmp")))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "no such job directory")

    def test_stock_cut_at_any_length_leaves_the_job_as_it_is(self):
        with open(self.path("StockModelInput.tmp"), "rb") as file:
            whole = file.read()
        with open(self.path("StockModelOutput.tmp"), "wb") as file:
            file.write(b"of an earlier run")
        for length in (0, 13, 17, 21, 22, 100, len(whole) - 1):
            with open(self.path("StockModelInput.tmp"), "wb") as file:
                file.write(whole[:length])
            before = self.contents()
            run = self.qzhost("--quiet", "sweep", spelled(self.job))
            self.assertEqual(run.code, 2, (length, run.err))
            self.assert_one_line(run.err, "StockModelInput.tmp")
            self.assertEqual(self.contents(), before)

    def test_missing_stock(self):
        os.remove(self.path("StockModelInput.tmp"))
        run = self.qzhost("--quiet", "sweep", spelled(self.job))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "StockModelInput.tmp", "No such file")

    def test_missing_stock_with_an_older_result_is_no_new_result(self):
        os.remove(self.path("StockModelInput.tmp"))
        job_files.write_box(self.path("StockModelOutput.tmp"), (0, 0, 0), (1, 1, 1))
        before = self.contents()["StockModelOutput.tmp"]
        run = self.qzhost("--json", "--quiet", "sweep", spelled(self.job))
        self.assertEqual(run.code, 4)
        self.assertIs(run.object()["flag"], True)
        self.assert_one_line(run.err, "no new result")
        self.assertEqual(self.contents()["StockModelOutput.tmp"], before)

    def test_path_file_with_an_unknown_tool(self):
        with open(self.path("TmpPathInfo0.tmp"), "r+b") as file:
            file.seek(3 + 15 * 8)
            file.write(b"\x07\x00")
        run = self.qzhost("--quiet", "sweep", spelled(self.job))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "TmpPathInfo0.tmp")

    def test_scratch_file_that_cannot_be_written(self):
        os.mkdir(self.path("BinaryPaths.tmp"))
        run = self.qzhost("--quiet", "sweep", spelled(self.job))
        self.assertEqual(run.code, 1)
        self.assert_one_line(run.err, "BinaryPaths.tmp")

    def ordinary_user(self):
        """Options that run the program as someone whom file modes bind; the superuser is not."""
        identity = {"user": 65534, "group": 65534, "extra_groups": []} \
            if os.geteuid() == 0 else {}
        os.chmod(self.folder, 0o755)
        try:
            reachable = self.qzhost("--version", **identity).code == 0
        except PermissionError:
            reachable = False
        if not reachable:
            self.skipTest("the build tree cannot be read by an ordinary user")
        return identity

    @unittest.skipIf(WINDOWS, "file modes do not bind the emulator's user")
    def test_read_only_result_of_a_conversion_is_not_replaced(self):
        identity = self.ordinary_user()
        os.chmod(self.job, 0o777)
        result = self.path("keep.ply")
        with open(result, "wb") as file:
            file.write(b"mine")
        os.chmod(result, 0o444)
        before = self.contents()
        run = self.qzhost("convert", self.path("StockModelInput.tmp"), result, **identity)
        self.assertEqual(run.code, 2, run.err)
        self.assert_one_line(run.err, result + ": cannot be written")
        self.assertEqual(self.contents(), before)

    @unittest.skipIf(WINDOWS, "file modes do not bind the emulator's user")
    def test_read_only_job_directory(self):
        identity = self.ordinary_user()
        os.chmod(self.job, 0o555)
        self.addCleanup(os.chmod, self.job, 0o755)
        before = self.contents()
        run = self.qzhost("--quiet", "sweep", self.job, **identity)
        self.assertEqual(run.code, 1, run.err)
        self.assert_one_line(run.err, self.job, "cannot be written")
        self.assertEqual(self.contents(), before)

    def test_directory_for_copies_that_is_not_there(self):
        before = self.contents()
        run = self.qzhost("--stock-data-dir", "none", "sweep", spelled(self.job))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "none: there is no such directory")
        self.assertEqual(self.contents(), before)

    @unittest.skipUnless(os.path.exists("/dev/full") and not WINDOWS, "needs a full device")
    def test_report_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            run = subprocess.run([os.path.join(BIN, EXECUTABLE), "info", self.job], stdout=full,
                                 stderr=subprocess.PIPE, timeout=120, check=False)
        self.assertEqual(run.returncode, 1)
        self.assert_one_line(run.stderr.decode(), "standard output cannot be written")

    def test_add_in_without_its_resource_module(self):
        moved = os.path.join(self.folder, "bin")
        shutil.copytree(BIN, moved, ignore=shutil.ignore_patterns("Resources", "*.exe.manifest"))
        before = self.contents()
        run = self.qzhost("sweep", spelled(self.job), bin_directory=moved)
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "QZTUtlA", "entry routine refuses")
        self.assertEqual(self.contents(), before)

    def test_add_in_that_is_not_there(self):
        run = self.qzhost("--addin", "none.dll", "sweep", spelled(self.job))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "cannot load the add-in")

    def test_errors_are_an_object_for_machines_too(self):
        run = self.qzhost("--json", "sweep", spelled(os.path.join(self.folder, "none")))
        self.assertEqual(run.code, 2)
        self.assertEqual(run.object()["exit_code"], 2)
        self.assertIn("no such job directory", run.object()["reason"])


class CommandLine(SystemTest):
    def test_help_at_every_level(self):
        run = self.qzhost("--help")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertIn("\nUsage: qzhost [", run.out.replace("\r", ""))
        self.assertIn("sweep", run.out)
        run = self.qzhost("sweep", "--help")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertIn("JOBDIR", run.out)

    def test_version(self):
        run = self.qzhost("--version")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertRegex(run.out, r"^qzhost \d+\.\d+\.\d+\r?\n$")

    def test_wrong_usage(self):
        for arguments in ([], ["nonsense"], ["sweep"], ["sweep", self.job, "extra"],
                          ["--units", "ell", "sweep", self.job],
                          ["--host-tolerance", "-1", "sweep", self.job],
                          ["--host-tolerance=nan", "sweep", self.job],
                          ["new-job", "none", "--stock", "box:0,0,0,1,1,1", "--gcode", "g",
                           "--tools", "t", "--tolerance=-1"]):
            run = self.qzhost(*arguments)
            self.assertEqual(run.code, 2, arguments)
            self.assertEqual(run.out, "")
            self.assert_one_line(run.err, "try --help")
            self.assertLess(len(run.err), 120, run.err)

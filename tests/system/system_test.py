"""The built libraries through qzhost: what a user types, and what comes of it."""

import json
import os
import shutil
import signal
import subprocess
import sys
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


class Run:
    """A finished program. Its output goes to files, not pipes: an emulator's server, which outlives
    the program, holds the pipes open and would be waited for."""

    def __init__(self, command, **options):
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


def setUpModule():
    if EMULATOR:
        # Makes its own directory of settings the first time, which takes longer than any test.
        subprocess.run(EMULATOR + [os.path.join(BIN, EXECUTABLE), "--version"], check=True,
                       timeout=400, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)


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


class RealSweep(SystemTest):
    def test_slot_has_the_volume_of_its_box_removed(self):
        run = self.qzhost("--json", "sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        report = run.object()
        self.assertIs(report["flag"], True)
        self.assertEqual(report["units"], "mm")
        self.assertEqual((report["facets_in"], report["vertices_in"]), (12, 8))
        self.assertAlmostEqual(report["volume_in"], job_files.SLOT_JOB_VOLUME_IN, places=6)
        self.assertAlmostEqual(report["volume_out"], job_files.SLOT_JOB_VOLUME_OUT, places=4)
        self.assertGreater(report["peak_memory"], 0)
        self.assertGreater(report["seconds"], 0)
        self.assertEqual(report["open_streams"], [])

        vertices, facets, colours = job_files.read_surface(self.path("StockModelOutput.tmp"))
        self.assertEqual((len(facets), len(vertices)),
                         (report["facets_out"], report["vertices_out"]))
        self.assertAlmostEqual(job_files.volume(vertices, facets), report["volume_out"], places=6)
        self.assertEqual(set(colours), {5, 9})

    def test_files_and_copies_are_named_as_on_windows_and_all_reported(self):
        run = self.qzhost("--json", "sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        written = ["BinaryPaths.tmp", "BinaryPaths.txt", "Part7_TmpSaveBinaryPaths.tmp",
                   "Part7_TmpSaveBinaryPaths.txt", "Part7_TmpSaveInputStock.iff",
                   "Part7_TmpSaveOutputStock.iff", "StockModelOutput.tmp"]
        self.assertEqual(run.object()["files_written"],
                         [spelled(self.path(name)) for name in written])
        files = self.contents()
        self.assertEqual(sorted(files),
                         sorted(written + ["StockModelInput.tmp", "TmpPathInfo0.tmp"]))
        self.assertEqual(files["Part7_TmpSaveOutputStock.iff"], files["StockModelOutput.tmp"])

    def test_same_job_gives_the_same_bytes_again(self):
        self.assertEqual(self.qzhost("sweep", spelled(self.job)).code, 0)
        first = self.contents()
        self.assertEqual(self.qzhost("sweep", spelled(self.job)).code, 0)
        self.assertEqual(self.contents(), first)

    def test_copies_go_to_the_directory_that_is_asked_for(self):
        keep = os.path.join(self.folder, "keep")
        os.mkdir(keep)
        run = self.qzhost("--json", "--stock-data-dir", spelled(keep), "sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        self.assertEqual(sorted(self.contents(keep)),
                         ["Part7_TmpSaveBinaryPaths.tmp", "Part7_TmpSaveBinaryPaths.txt",
                          "Part7_TmpSaveInputStock.iff", "Part7_TmpSaveOutputStock.iff"])
        self.assertFalse([name for name in self.contents() if "TmpSave" in name])
        self.assertIn(spelled(os.path.join(keep, "Part7_TmpSaveOutputStock.iff")),
                      run.object()["files_written"])

    @unittest.skipIf(WINDOWS, "the registry stands in for this file there")
    def test_copies_go_to_the_directory_of_the_configuration_file(self):
        keep = os.path.join(self.folder, "keep")
        os.mkdir(keep)
        with open(self.environment["QZHOST_CONFIG"], "w", encoding="ascii") as file:
            file.write("[Software\\qzhost\\Configurations\\Variables\\Toolpaths]\n"
                       "Enable Stock Model Data Directory = " + keep + "\n")
        run = self.qzhost("--json", "sweep", self.job)
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("Part7_TmpSaveOutputStock.iff", self.contents(keep))
        self.assertIn(os.path.join(keep, "Part7_TmpSaveOutputStock.iff"),
                      run.object()["files_written"])

    def test_relative_directory_for_copies_holds_also_for_those_made_on_the_way(self):
        keep = os.path.join(self.folder, "keep")
        os.mkdir(keep)
        # A stock that is cut away whole makes the kernel say so while it runs.
        job_files.write_path(self.path("TmpPathInfo0.tmp"), [(-60, 10, -5), (60, 10, -5)],
                             tool=(0.0, 50.0, 0.0, 90.0, 0.0, 0.0))
        run = self.qzhost("--stock-data-dir", "keep", "sweep", "Part7", cwd=self.folder)
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("Part7_TmpSaveErrorCapture.txt", self.contents(keep))

    def test_position_cut_short_is_cut_all_the_same_but_said(self):
        with open(self.path("TmpPathInfo0.tmp"), "r+b") as file:
            file.truncate(os.path.getsize(self.path("TmpPathInfo0.tmp")) - 1)
        run = self.qzhost("--json", "sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("TmpPathInfo0.tmp", run.object()["damaged_input"])
        self.assertIn("cut short", run.object()["damaged_input"])

    def test_relative_directory_is_taken_from_the_current_one(self):
        run = self.qzhost("--json", "sweep", "Part7", cwd=self.folder)
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("Part7_TmpSaveInputStock.iff", self.contents())

    def test_progress_goes_to_standard_error_and_nowhere_when_quiet(self):
        run = self.qzhost("sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("Sweeping", run.err)
        self.assertNotIn("Sweeping", run.out)
        self.assertNotIn("\x1b", run.err)
        self.assertEqual(self.qzhost("--quiet", "sweep", spelled(self.job)).err, "")

    def test_units_are_said_in_every_report(self):
        run = self.qzhost("--units", "inch", "sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("inch^3", run.out)
        self.assertTrue(run.out.startswith("units"), run.out)

    def test_stock_cut_away_whole_is_an_empty_result_and_said_so(self):
        job_files.write_path(self.path("TmpPathInfo0.tmp"), [(-60, 10, -5), (60, 10, -5)],
                             tool=(0.0, 50.0, 0.0, 90.0, 0.0, 0.0))
        run = self.qzhost("sweep", spelled(self.job))
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("nothing is left of the stock", run.out)
        self.assertEqual(job_files.read_surface(self.path("StockModelOutput.tmp")), ([], [], []))

    def test_what_the_kernel_says_is_the_reason_of_a_failure(self):
        vertices, facets, _ = job_files.read_surface(self.path("StockModelInput.tmp"))
        job_files.write_surface(self.path("StockModelInput.tmp"), vertices, facets[1:])
        run = self.qzhost("--json", "--quiet", "sweep", spelled(self.job))
        self.assertEqual(run.code, 1)
        report = run.object()
        self.assertIs(report["flag"], False)
        self.assert_one_line(run.err, report["reason"])
        with open(self.path("ErrorCapture.txt"), encoding="utf-8") as file:
            self.assertIn(report["reason"], file.read())
        self.assertFalse(os.path.exists(self.path("StockModelOutput.tmp")))


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


class OtherAddIns(SystemTest):
    """Add-ins that behave as no good one does."""

    def sweep(self, words, *options):
        return self.qzhost("--json", "--quiet", *options, "sweep", spelled(self.job), addin=words)

    def test_new_readable_result_is_success(self):
        run = self.sweep("succeed")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertAlmostEqual(run.object()["volume_out"], job_files.SLOT_JOB_VOLUME_IN, places=6)

    def test_replaced_result_is_new(self):
        job_files.write_box(self.path("StockModelOutput.tmp"), (0, 0, 0), (1, 1, 1))
        self.assertEqual(self.sweep("succeed").code, 0)

    def test_success_without_a_result(self):
        run = self.sweep("nothing")
        self.assertEqual(run.code, 4)
        self.assertIs(run.object()["flag"], True)
        self.assert_one_line(run.err, "no new result")

    def test_success_with_a_stale_result_only(self):
        job_files.write_box(self.path("StockModelOutput.tmp"), (0, 0, 0), (1, 1, 1))
        self.assertEqual(self.sweep("nothing").code, 4)

    def test_success_with_an_unreadable_result(self):
        run = self.sweep("garbage")
        self.assertEqual(run.code, 4)
        self.assert_one_line(run.err, "StockModelOutput.tmp")

    def test_failure_with_a_result_is_failure(self):
        run = self.sweep("partial")
        self.assertEqual(run.code, 1)
        self.assertIs(run.object()["flag"], False)

    def test_last_error_of_the_kernel_is_the_reason(self):
        run = self.sweep("kernel=open-stock")
        self.assertEqual(run.code, 1)
        self.assertEqual(run.object()["reason"], "open-stock")
        self.assert_one_line(run.err, "open-stock")

    def test_exception_out_of_the_add_in_is_failure(self):
        run = self.sweep("throw")
        self.assertEqual(run.code, 1)
        self.assert_one_line(run.err, "thrown by the test")

    def test_stream_left_open_is_named(self):
        streams = self.sweep("succeed leak").object()["open_streams"]
        self.assertEqual(len(streams), 1)
        self.assertIn("TestAddIn:77 ", streams[0])
        self.assertIn("StockModelInput.tmp", streams[0])

    def test_other_protocol_version_is_refused(self):
        run = self.sweep("version=1400")
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "version 1400")

    @unittest.skipIf(WINDOWS, "no console event reaches a program under the emulator")
    def test_interrupt_cancels_through_the_add_in(self):
        environment = dict(self.environment, QZ_TEST_ADDIN="wait succeed")
        process = subprocess.Popen(
            [os.path.join(BIN, EXECUTABLE), "--addin", TEST_ADDIN, "--json", "sweep", self.job],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE)
        # The progress line says that the operation runs.
        self.assertIn(b"Sweeping", process.stderr.readline())
        process.send_signal(signal.SIGINT)
        out, err = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 3)
        report = json.loads(out)
        self.assertIs(report["cancelled"], True)
        self.assertIs(report["flag"], True)
        self.assert_one_line(err.decode(), "stopped by the user")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=1))

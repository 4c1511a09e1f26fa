"""qzhost with add-ins that behave as no good one does."""

import json
import os
import signal
import subprocess
import unittest

import job_files
from harness import BIN, EXECUTABLE, TEST_ADDIN, WINDOWS, SystemTest, spelled


class OtherAddIns(SystemTest):
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


class OtherAddInsOnSurfaces(SystemTest):
    """filter and heal, which judge the file and not the flag."""

    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_box(self.box, (0, 0, 0), (1, 1, 1), colour=200)
        self.out = self.file("out.iff")
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        self.commands = (("filter", spelled(self.box), spelled(self.out), "--colour", "200"),
                         ("heal", spelled(self.box), spelled(self.out), "--tolerance", "0.5"))

    def assert_output_is_kept(self, words, code, flag, reason):
        before = self.contents(self.folder)
        for command in self.commands:
            run = self.qzhost("--json", "--quiet", *command, addin=words)
            self.assertEqual(run.code, code, (command, run.err))
            self.assertIs(run.object()["flag"], flag)
            self.assertEqual(run.object()["files_written"], [])
            self.assert_one_line(run.err, reason)
            self.assertEqual(self.contents(self.folder), before)
            self.assert_nothing_temporary_is_left()

    def test_result_takes_the_place_of_an_older_one(self):
        for command in self.commands:
            run = self.qzhost("--json", "--quiet", *command, addin="succeed")
            self.assertEqual((run.code, run.err), (0, ""))
            files = self.contents(self.folder)
            self.assertEqual(files["out.iff"], files["box.iff"])

    def test_success_without_a_result(self):
        self.assert_output_is_kept("nothing", 4, True, "has made no result")

    def test_success_with_an_unreadable_result(self):
        self.assert_output_is_kept("garbage", 4, True, "out.iff")

    def test_failure_with_a_result(self):
        self.assert_output_is_kept("partial", 1, False, "gives no reason")

    def test_last_error_of_the_kernel_is_the_reason(self):
        self.assert_output_is_kept("kernel=no-memory", 1, False, "no-memory")

    def test_exception_out_of_the_add_in(self):
        self.assert_output_is_kept("throw", 1, False, "thrown by the test")

    def test_filter_that_keeps_other_facets_than_those_asked_for(self):
        self.commands = (self.commands[0][:-1] + ("201",),)
        self.assert_output_is_kept("succeed", 4, True, "has kept 12 of 0 facets")

    def test_stream_left_open_is_named(self):
        for command in self.commands:
            run = self.qzhost("--json", "--quiet", *command, addin="succeed leak")
            self.assertIn("TestAddIn:77 ", run.object()["open_streams"][0])

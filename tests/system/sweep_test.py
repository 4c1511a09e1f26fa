"""The built libraries through qzhost: what a user types, and what comes of it."""

import os
import unittest

import job_files
from harness import WINDOWS, SystemTest, spelled


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
        self.assertAlmostEqual(report["volume_removed"], job_files.SLOT_JOB_VOLUME_IN
                               - job_files.SLOT_JOB_VOLUME_OUT, places=4)
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

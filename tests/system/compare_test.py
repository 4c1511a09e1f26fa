"""Comparing parts with stocks, and compressing stocks, through the built libraries."""

import csv
import os
import struct

import job_files
from harness import SystemTest, spelled

LOW, HIGH = (0, 0, 0), (40, 20, 10)


class Compare(SystemTest):
    """The stock is the part but for its top, which is 2 too low: 800 of gouge, 2 deep."""

    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.part, self.stock = self.file("part.iff"), self.file("stock.iff")
        self.out = self.file("out.iff")
        job_files.write_box(self.part, LOW, HIGH)
        job_files.write_box(self.stock, LOW, (40, 20, 8))

    def compare(self, *arguments, **options):
        run = self.qzhost("--json", "--quiet", "compare", *arguments, **options)
        self.assert_nothing_temporary_is_left()
        return run

    def by_files(self, *arguments, bands=("-0.05=1", "0.05=2"), **options):
        return self.compare("--part", spelled(self.part), "--stock", spelled(self.stock), "--band",
                            *bands, "--stock-colour", "3", "-o", spelled(self.out), *arguments,
                            **options)

    def test_top_that_is_too_low_is_a_gouge_of_its_depth(self):
        run = self.by_files()
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        self.assertAlmostEqual(report["area"], 2800, places=6)
        self.assertAlmostEqual(report["minimum"], -2, places=6)
        self.assertAlmostEqual(report["maximum"], 0, places=6)
        worst = report["gouges"][0]
        self.assertAlmostEqual(worst["deviation"], -2, places=6)
        self.assertAlmostEqual(worst["place"][2], 10, places=6)
        self.assertEqual(report["excesses"], [])
        self.assertAlmostEqual(sum(band["area"] for band in report["bands"]), 2800, places=3)
        self.assertEqual(report["facets_of_no_band"], 0)
        # The top, and the strip of the walls that is more than 0.05 above the stock: 120 x 1.95.
        self.assertAlmostEqual(report["bands"][0]["area"], 800 + 120 * 1.95, delta=2)
        self.assertEqual(report["bands"][0]["colour"], 1)
        self.assertEqual(report["files_written"], [spelled(self.out)])
        vertices, facets, colours = job_files.read_surface(self.out)
        self.assertAlmostEqual(job_files.volume(vertices, facets), 8000, places=6)
        self.assertEqual(set(colours), {1, 2})

    def test_material_left_standing_is_an_excess(self):
        job_files.write_box(self.stock, LOW, (40, 20, 10.5))
        report = self.by_files().object()
        self.assertAlmostEqual(report["maximum"], 0.5, places=6)
        self.assertEqual(report["gouges"], [])
        self.assertEqual(report["bands"][2]["colour"], 3)
        self.assertAlmostEqual(report["bands"][2]["area"], 798, delta=10)

    def test_limit_that_is_passed_makes_the_code_1_and_keeps_the_output(self):
        run = self.by_files("--max-gouge", "1.9")
        self.assertEqual(run.code, 1)
        self.assert_one_line(run.err, "the largest gouge, 2.00000 at (", "passes 1.90000")
        self.assertTrue(os.path.isfile(self.out))
        self.assertEqual(self.by_files("--max-gouge", "2.1", "--max-excess", "0.1").code, 0)

    def test_table_has_the_figures_of_the_report(self):
        table = self.file("figures.csv")
        report = self.by_files("--csv", spelled(table)).object()
        with open(table, encoding="ascii", newline="") as file:
            rows = list(csv.DictReader(file))
        bands = [row for row in rows if row["item"] == "band"]
        self.assertEqual([row["from"] for row in bands], ["", "-0.05", "0.05"])
        self.assertEqual([float(row["area"]) for row in bands],
                         [band["area"] for band in report["bands"]])
        value = {row["item"]: float(row["value"]) for row in rows if row["item"] != "band"}
        self.assertEqual(value["rms"], report["rms"])
        self.assertEqual(value["percentile_50"], report["percentiles"]["50"])

    def test_job_is_compared_in_its_own_directory(self):
        job_files.write_box(self.path("PartFileToCompare.iff"), LOW, HIGH)
        job_files.write_box(self.path("StockModelOutput.tmp"), LOW, (40, 20, 8))
        with open(self.path("TmpCompareInfo.tmp"), "wb") as file:
            file.write(struct.pack("<ii2I2d", 3, 2, 1, 2, -0.05, 0.05))
        run = self.compare(spelled(self.job), "--max-gouge", "3")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertAlmostEqual(run.object()["minimum"], -2, places=6)
        self.assertIn("CompareResults.iff", self.contents())

    def test_job_without_a_part_has_no_result_although_the_flag_is_true(self):
        run = self.compare(spelled(self.job))
        self.assertEqual(run.code, 4)
        self.assertIs(run.object()["flag"], True)
        self.assert_one_line(run.err, "there is no part, so nothing was compared")

    def test_open_stock_has_no_result_and_keeps_what_stood_at_the_output(self):
        job_files.write_surface(self.stock, job_files.box_corners(LOW, HIGH),
                                job_files.BOX_FACETS[1:])
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        before = self.contents(self.folder)
        run = self.by_files()
        self.assertEqual(run.code, 4)
        self.assertEqual(self.contents(self.folder), before)

    def test_wrong_arguments_are_named_in_one_line(self):
        before = self.contents(self.folder)
        part, stock, out = spelled(self.part), spelled(self.stock), spelled(self.out)
        files = ("--part", part, "--stock", stock, "-o", out)
        for words, *arguments in (
                ("JOBDIR or --part is required",),
                ("JOBDIR has its own part", spelled(self.job), "--part", part),
                ("--band is required", *files),
                ("--stock is required", "--part", part, "-o", out, "--band", "1=1"),
                ("-o is required", "--part", part, "--stock", stock, "--band", "1=1"),
                ("1 is not LIMIT=COLOUR", *files, "--band", "1"),
                ("nan=1 is not LIMIT=COLOUR", *files, "--band", "nan=1"),
                ("1=256 is not LIMIT=COLOUR", *files, "--band", "1=256"),
                ("two bands end at 1", *files, "--band", "1=1", "1=2"),
                ("is the input itself", "--part", part, "--stock", stock, "-o", part, "--band",
                 "1=1"),
                ("is the input itself", *files, "--band", "1=1", "--csv", stock),
                ("-1 is not a number from 0 up", *files, "--band", "1=1", "--max-gouge", "-1"),
                ("cannot be opened", "--part", spelled(self.file("none.iff")), "--stock", stock,
                 "-o", out, "--band", "1=1")):
            run = self.qzhost("compare", *arguments)
            self.assertEqual(run.code, 2, (arguments, run.err))
            self.assert_one_line(run.err, words)
        self.assertEqual(self.contents(self.folder), before)


class Compress(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.out = self.file("out.iff")
        os.remove(self.path("TmpPathInfo0.tmp"))

    def compress(self, source, result, *arguments):
        run = self.qzhost("--json", "--quiet", "compress", spelled(self.job), source, result,
                          *(arguments or ("--tolerance", "0.01")))
        self.assert_nothing_temporary_is_left()
        return run

    def test_box_stays_where_it_is(self):
        run = self.compress("StockModelInput.tmp", spelled(self.out))
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        self.assertEqual((report["facets_in"], report["facets_out"]), (12, 12))
        self.assertEqual(report["result_from_input"]["distance"], 0)
        self.assertEqual(report["input_from_result"]["distance"], 0)
        self.assertIs(report["within_tolerance"], True)
        vertices, facets, _ = job_files.read_surface(self.out)
        self.assertAlmostEqual(job_files.volume(vertices, facets), 8000, places=6)

    def test_relative_output_counts_from_the_current_directory(self):
        command_directory = self.file("elsewhere")
        os.mkdir(command_directory)
        run = self.qzhost("--quiet", "compress", spelled(self.job), "StockModelInput.tmp", "s.iff",
                          "--tolerance", "0.01", cwd=command_directory)
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(os.listdir(command_directory), ["s.iff"])
        self.assertNotIn("s.iff", self.contents())

    def test_output_over_the_input_or_a_scratch_file_is_refused(self):
        before = self.contents()
        for words, result in (("is the input itself", "StockModelInput.tmp"),
                              ("writes this file itself", "BinaryPaths.tmp"),
                              ("writes this file itself", "./binarypaths.TMP")):
            run = self.compress("StockModelInput.tmp", spelled(self.path(result)))
            self.assertEqual(run.code, 2)
            self.assert_one_line(run.err, words)
        self.assertEqual(self.contents(), before)

    def test_input_that_cannot_be_read_keeps_the_output(self):
        with open(self.path("StockModelInput.tmp"), "wb") as file:
            file.write(b"binary surface" + struct.pack("<ii", 5, 5))
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        run = self.compress("StockModelInput.tmp", spelled(self.out))
        self.assertEqual(run.code, 2)
        with open(self.out, "rb") as file:
            self.assertEqual(file.read(), b"of an earlier run")

    def test_wrong_arguments_are_named_in_one_line(self):
        for words, *arguments in (("--tolerance is required", "a", "b.iff"),
                                  ("is not a number from 0 up", "a", "b.iff", "--tolerance", "-1"),
                                  ("OUT is required", "a", "--tolerance", "1"),
                                  ("no mesh format", "StockModelInput.tmp", "b.txt", "--tolerance",
                                   "1")):
            run = self.qzhost("compress", spelled(self.job), *arguments)
            self.assertEqual(run.code, 2, (arguments, run.err))
            self.assert_one_line(run.err, words)

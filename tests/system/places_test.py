"""Directories of every sort of name, and a user whose decimals have a comma."""

import os
import shutil
import unittest

import job_files
from harness import EMULATOR, TESTS, WINDOWS, SystemTest, spelled

SAMPLES = os.path.join(os.path.dirname(__file__), "..", "..", "samples")
# The most that a path of the add-in's has.
LONGEST = 255
TIMES = ("seconds", "peak_memory")


class PlacesTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.copies = self.file("copies")
        os.mkdir(self.copies)
        if EMULATOR:
            # Else it knows no file names but English ones.
            self.environment["LC_ALL"] = "C.UTF-8"

    def run_everything(self, place):
        """Every sort of subcommand on files in this directory; what is reported and what is there
        afterwards, by name. Diagnostic copies, whose names are longer, go elsewhere."""
        os.makedirs(place)
        at = lambda name: os.path.join(place, name)
        for name in ("two-tools.ngc", "tools-two.json"):
            shutil.copy(os.path.join(SAMPLES, name), place)
        job_files.write_holed_torus(at("torus.iff"), 12, 8, 11)
        box = "box:0,0,-20,120,80,0"
        reports = []
        for words in (
                ("new-job", at("J"), "--stock", box, "--gcode", at("two-tools.ngc"),
                 "--tools", at("tools-two.json"), "--tolerance", "0.2"),
                ("sweep", at("J")),
                ("info", at("J")),
                ("heal", at("torus.iff"), at("healed.iff"), "--tolerance", "0.001"),
                ("compress", at("J"), at("healed.iff"), at("less.iff"), "--tolerance", "0.01"),
                ("filter", at("healed.iff"), at("few.iff"), "--colour", "5"),
                ("convert", at("healed.iff"), at("h.stl"), "--ascii"),
                ("silhouette", at("healed.iff"), at("a.curves"), "--distance", "0.01"),
                ("spin-silhouette", at("healed.iff"), at("b.curves"), "--distance", "0.01"),
                ("offset", at("healed.iff"), at("o.iff"), "--distance", "0.2", "--angle", "90"),
                ("info", at("a.curves"))):
            run = self.qzhost("--quiet", "--json", "--stock-data-dir", spelled(self.copies),
                              *(self.in_place(word, place) for word in words))
            self.assertEqual(run.code, 0, (words, run.out, run.err))
            report = run.object()
            # All names are told as they are.
            self.assertNotIn("\ufffd", run.out, words)
            if "job" in report:
                self.assertEqual(report["job"].rstrip("\\/").replace("\\", "/"),
                                 spelled(at("J")).replace("\\", "/"))
            for key in TIMES:
                report.pop(key, None)
            reports.append(report)
        files = {os.path.relpath(os.path.join(folder, name), place): os.path.join(folder, name)
                 for folder, _, names in os.walk(place) for name in names}
        contents = {}
        for name, path in files.items():
            with open(path, "rb") as file:
                contents[name] = file.read()
        return reports, contents

    @staticmethod
    def in_place(word, place):
        return spelled(word) if word.startswith(place) else word

    def longest_place(self):
        """In which the result of the job's sweep has as many characters as a path may have."""
        name = os.path.join("J", "StockModelOutput.tmp")
        left = LONGEST - len(spelled(self.file(""))) - 1 - len(name)
        place = self.folder
        while left > 0:
            length = left if left <= 60 else min(50, left - 10)
            place = os.path.join(place, "x" * (length if left <= 60 else length - 1))
            left -= length
        self.assertEqual(len(spelled(os.path.join(place, name))), LONGEST)
        return place

    def test_names_of_directories_make_no_difference(self):
        _, plain = self.run_everything(self.file("plain"))
        # In the code page of western Windows the last three stand where other ones have control
        # characters.
        for place in (self.file("a job  with spaces"), self.file("Größe € Š œ"),
                      self.longest_place()):
            with self.subTest(place):
                _, files = self.run_everything(place)
                self.assertEqual(files, plain)

    @unittest.skipIf(WINDOWS, "programs begin in the C locale there, whatever the user's is")
    def test_users_locale_makes_no_difference(self):
        locales = os.path.join(TESTS, "locales")
        if not os.path.isdir(locales):
            self.skipTest("no locale with a decimal comma could be made")
        plain = self.run_everything(self.file("place"))
        shutil.move(self.file("place"), self.file("plain"))
        self.environment.update(LOCPATH=locales, LC_ALL="de_DE.UTF-8")
        self.assertEqual(self.run_everything(self.file("place")), plain)

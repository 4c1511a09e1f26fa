"""From cutter-location text and a stock to the compared part, through the built libraries."""

import os
import subprocess
import sys

from harness import SystemTest, spelled

SAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "samples")


class Apt(SystemTest):
    def setUp(self):
        super().setUp()
        self.program = os.path.realpath(os.path.join(SAMPLES, "bracket.apt"))
        self.directory = self.file("bracket")

    def new_job(self, *arguments):
        return self.qzhost("--json", "new-job", spelled(self.directory), "--stock",
                           "box:0,0,0,120,60,32", *arguments)

    def test_bracket_has_the_gouge_and_the_uncut_spot_of_its_program_and_nothing_else(self):
        run = self.new_job("--apt", spelled(self.program), "--strict", "--tolerance", "0.05")
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        self.assertEqual([path["tool"] for path in report["paths"]], [1, 2, 3, 4])
        self.assertEqual((report["holes"], report["arcs"]), (4, 8))
        self.assertEqual(report["inserts"][0], {"line": 4, "text": "STOCK BOX 0,0,0 TO 120,60,32"})
        self.assertEqual(self.qzhost("--quiet", "sweep", spelled(self.directory)).code, 0)
        part = self.file("bracket.off")
        subprocess.run([sys.executable, os.path.join(SAMPLES, "make-bracket.py"), part], check=True)
        stock = os.path.join(self.directory, "StockModelOutput.tmp")
        run = self.qzhost("--json", "--quiet", "compare", "--part", spelled(part), "--stock",
                          spelled(stock), "--band", "-0.1=1", "0.1=2", "--stock-colour", "3",
                          "-o", spelled(self.file("out.ply")))
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        self.assertAlmostEqual(report["minimum"], -0.6, delta=0.05)
        self.assertAlmostEqual(report["maximum"], 0.5, delta=0.05)
        x, y, z = report["gouges"][0]["place"]
        self.assertTrue(101.5 < x < 110.5 and 17.5 < y < 42.5 and abs(z - 12) < 1e-6)
        x, y, z = report["excesses"][0]["place"]
        self.assertTrue(66 < x < 92 and 29 < y < 31 and abs(z - 5) < 1e-6)
        # The groove, 16 x 8 + 16 pi, less its rim, where its walls are nearer.
        self.assertAlmostEqual(report["bands"][0]["area"], 178.3, delta=8)
        self.assertLess(abs(report["percentiles"]["50"]), 1e-3)

    def test_wrong_arguments_are_named_in_one_line(self):
        broken = self.file("broken.apt")
        with open(broken, "w", encoding="ascii") as file:
            file.write("CUTTER/8\nLOAD/TOOL,1\nGOTO/1,2\n")
        for words, *arguments in (
                ("--gcode or --apt is required",),
                ("--tools is required with --gcode", "--gcode", spelled(self.program)),
                ("--gcode excludes --apt", "--apt", spelled(self.program), "--gcode", "x"),
                ("none.apt: cannot be opened", "--apt", spelled(self.file("none.apt"))),
                ("GOTO takes three numbers, or six with a tool vector (line 3)", "--apt",
                 spelled(broken))):
            run = self.qzhost("new-job", spelled(self.directory), "--stock", "box:0,0,0,1,1,1",
                              *arguments)
            self.assertEqual(run.code, 2, (arguments, run.err))
            self.assert_one_line(run.err, words)
            self.assertFalse(os.path.exists(self.directory))

    def test_tilted_tool_is_refused_in_one_line(self):
        tilted = self.file("tilted.apt")
        with open(tilted, "w", encoding="ascii") as file:
            file.write("CUTTER/8\nLOAD/TOOL,1\nGOTO/1,2,3\nGOTO/1,2,0,0,.6,.8\n")
        run = self.new_job("--apt", spelled(tilted))
        self.assertEqual(run.code, 2)
        self.assert_one_line(run.err, "tool 1 moves in 5 axes, which the kernel cannot cut yet")

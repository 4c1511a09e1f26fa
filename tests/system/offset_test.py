"""Offsets of surfaces through the built libraries."""

import math
import os

import job_files
from harness import SystemTest, spelled

SIDE = 10


class Offset(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_box(self.box, (0, 0, 0), (SIDE, SIDE, SIDE), colour=77)
        self.out = self.file("out.iff")

    def offset(self, source, distance, angle="0", result=None):
        run = self.qzhost("--json", "--quiet", "offset", spelled(source),
                          spelled(result or self.out), "--distance", distance, "--angle", angle)
        self.assert_nothing_temporary_is_left()
        return run

    def write_open_box(self):
        path = self.file("open.iff")
        job_files.write_surface(path, job_files.box_corners((0, 0, 0), (SIDE, SIDE, SIDE)),
                                job_files.BOX_FACETS[1:])
        return path

    def assert_kept(self, code, part, run, before):
        self.assertEqual(run.code, code, run.err)
        self.assert_one_line(run.err, part)
        self.assertEqual(run.err.splitlines(), ["qzhost: " + run.object()["reason"]])
        self.assertEqual(self.contents(self.folder), before)

    def keep_something_at_the_output(self):
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        return self.contents(self.folder)

    def test_outwards_rounds_edges_and_corners(self):
        run = self.offset(self.box, "2", "10")
        self.assertEqual((run.code, run.err), (0, ""))
        area = 6 * SIDE**2 + 6 * math.pi * SIDE * 2 + 4 * math.pi * 2**2
        volume = SIDE**3 + 6 * SIDE**2 * 2 + 3 * math.pi * SIDE * 2**2 + 4 / 3 * math.pi * 2**3
        within = 2 * (1 - math.cos(math.radians(5)))
        report = run.object()
        self.assertAlmostEqual(report["volume_out"], volume, delta=within * area)
        self.assertAlmostEqual(report["area_in"], 6 * SIDE**2, places=9)
        self.assertLess(abs(report["area_out"] / area - 1), 0.02)
        self.assertEqual((report["facets_in"], report["open_edges_out"]), (12, 0))
        self.assertEqual((report["distance"], report["angle"]), (2, 10))
        self.assertEqual(report["open_streams"], [])
        vertices, facets, colours = job_files.read_surface(self.out)
        self.assertEqual(len(facets), report["facets_out"])
        self.assertAlmostEqual(job_files.volume(vertices, facets), report["volume_out"], places=6)
        self.assertEqual(set(colours), {77})

    def test_inwards_is_a_smaller_box(self):
        run = self.offset(self.box, "-2")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertAlmostEqual(run.object()["volume_out"], (SIDE - 4)**3, delta=1e-6)

    def test_solid_of_which_nothing_is_left_is_an_empty_surface(self):
        run = self.offset(self.box, "-6")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(run.object()["facets_out"], 0)
        self.assertEqual(len(run.object()["warnings"]), 1)
        self.assertEqual(job_files.read_surface(self.out), ([], [], []))

    def test_far_away_is_the_same_moved_and_leaves_the_input_alone(self):
        far = self.file("far.iff")
        low = (40000, -3000, 800)
        job_files.write_box(far, low, tuple(corner + SIDE for corner in low))
        before = self.contents(self.folder)["far.iff"]
        run = self.offset(far, "-2")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(self.contents(self.folder)["far.iff"], before)
        vertices, _, _ = job_files.read_surface(self.out)
        for axis in range(3):
            self.assertAlmostEqual(min(v[axis] for v in vertices), low[axis] + 2, delta=1e-6)
            self.assertAlmostEqual(max(v[axis] for v in vertices), low[axis] + 8, delta=1e-6)

    def test_other_formats_are_converted_on_the_way_in_and_out(self):
        source, result = self.file("box.off"), self.file("out.ply")
        self.assertEqual(self.qzhost("convert", spelled(self.box), spelled(source)).code, 0)
        run = self.offset(source, "-2", result=result)
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(self.qzhost("--json", "info", spelled(result)).object()["files"][0]
                         ["topology"]["closed"], True)

    def test_open_surface_cannot_shrink(self):
        source = self.write_open_box()
        before = self.keep_something_at_the_output()
        run = self.offset(source, "-1")
        self.assert_kept(4, "open", run, before)
        self.assertIs(run.object()["flag"], True)

    def test_coordinate_that_is_not_finite_is_named(self):
        source = self.file("nan.iff")
        job_files.write_surface(source, [(0, 0, 0), (1, 0, 0), (0, float("nan"), 1)], [(0, 1, 2)])
        before = self.keep_something_at_the_output()
        self.assert_kept(4, "not finite", self.offset(source, "1"), before)

    def test_surface_without_facets_is_refused(self):
        source = self.file("empty.iff")
        job_files.write_surface(source, [], [])
        before = self.keep_something_at_the_output()
        run = self.offset(source, "1")
        self.assert_kept(1, "empty.iff: has no facets", run, before)
        self.assertIs(run.object()["flag"], False)

    def test_wrong_arguments_are_named_in_one_line(self):
        box, out = spelled(self.box), spelled(self.out)
        empty = self.file("empty.stl")
        with open(empty, "wb"):
            pass
        before = self.contents(self.folder)
        for part, *arguments in (
                ("0 is not a number other than 0", box, out, "--distance", "0", "--angle", "0"),
                ("nan is not a number other than 0", box, out, "--distance", "nan", "--angle", "0"),
                ("-1 is not an angle from 0 to 90 degrees", box, out, "--distance", "1", "--angle",
                 "-1"),
                ("91 is not an angle from 0 to 90 degrees", box, out, "--distance", "1", "--angle",
                 "91"),
                ("--angle is required", box, out, "--distance", "1"),
                ("--distance is required", box, out, "--angle", "1"),
                ("OUT is required", box, "--distance", "1", "--angle", "1"),
                ("is the input itself", box, box, "--distance", "1", "--angle", "1"),
                ("no mesh format has this extension", box, spelled(self.file("out.svg")),
                 "--distance", "1", "--angle", "1"),
                ("empty.stl: ", spelled(empty), out, "--distance", "1", "--angle", "1"),
                ("cannot be written", box, spelled(os.path.join(self.folder, "none", "out.iff")),
                 "--distance", "1", "--angle", "1")):
            run = self.qzhost("offset", *arguments)
            self.assertEqual((run.code, run.out), (2, ""), (arguments, run.err))
            self.assert_one_line(run.err, part)
        self.assertEqual(self.contents(self.folder), before)
        self.assert_nothing_temporary_is_left()

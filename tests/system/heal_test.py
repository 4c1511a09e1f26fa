"""Healing surfaces of every format through the built libraries."""

import os
import unittest

import job_files
from harness import WINDOWS, SystemTest, spelled

LOW, HIGH = (0, 0, 0), (40, 20, 10)
VOLUME = 40 * 20 * 10


class Heal(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_box(self.box, LOW, HIGH)
        self.out = self.file("out.iff")

    def heal(self, source, *options, tolerance="0.01"):
        run = self.qzhost("--json", "--quiet", "heal", spelled(source), *options, "--tolerance",
                          tolerance)
        self.assert_nothing_temporary_is_left()
        return run

    def write_open_box(self, name="open.iff", without=2, colour=5):
        path = self.file(name)
        facets = job_files.BOX_FACETS[:without] + job_files.BOX_FACETS[without + 1:]
        job_files.write_surface(path, job_files.box_corners(LOW, HIGH), facets, colour)
        return path

    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def test_sound_surface_comes_out_byte_for_byte(self):
        run = self.heal(self.box, spelled(self.out))
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(self.read(self.out), self.read(self.box))
        report = run.object()
        self.assertIs(report["flag"], True)
        self.assertIs(report["changed"], False)
        self.assertIs(report["sound"], True)
        self.assertEqual(report["files_written"], [spelled(self.out)])
        self.assertEqual(report["open_streams"], [])

    def test_counts_before_and_after_are_those_of_the_two_files(self):
        run = self.heal(self.write_open_box(colour=200), spelled(self.out))
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        expected = {"facets": (11, 12), "vertices": (8, 8), "components": (1, 1),
                    "open_edges": (3, 0), "non_manifold_edges": (0, 0), "flipped_facets": (0, 0),
                    "zero_area_facets": (0, 0), "holes": (1, 0)}
        for key, counts in expected.items():
            self.assertEqual((report[key + "_in"], report[key + "_out"]), counts, key)
        self.assertEqual(report["holes_filled"], 1)
        self.assertIsNone(report["volume_in"])
        self.assertAlmostEqual(report["volume_out"], VOLUME, places=6)
        self.assertIs(report["changed"], True)
        vertices, facets, colours = job_files.read_surface(self.out)
        self.assertAlmostEqual(job_files.volume(vertices, facets), VOLUME, places=6)
        self.assertEqual(colours, [200] * 12)

    def test_counts_of_flipped_zero_area_and_shared_edges(self):
        corners = job_files.box_corners(LOW, HIGH)
        facets = list(job_files.BOX_FACETS)
        facets[5] = facets[5][::-1]
        # A corner three times over, and a fin on an edge that two facets share already.
        facets += [(3, 3, 3), (0, 1, 8)]
        path = self.file("faulty.iff")
        job_files.write_surface(path, corners + [(20, -5, -5)], facets)
        run = self.heal(path, "--check")
        report = run.object()
        self.assertEqual(report["zero_area_facets_in"], 1)
        self.assertEqual(report["non_manifold_edges_in"], 1)
        self.assertEqual(report["flipped_facets_in"], 1)
        self.assertEqual(report["open_edges_in"], 2)

    def test_facets_with_corners_of_their_own_are_counted_as_they_lie(self):
        corners = job_files.box_corners(LOW, HIGH)
        loose = [corners[number] for facet in job_files.BOX_FACETS for number in facet]
        path = self.file("loose.iff")
        job_files.write_surface(path, loose, [(3 * i, 3 * i + 1, 3 * i + 2) for i in range(12)])
        report = self.heal(path, spelled(self.out)).object()
        self.assertEqual((report["vertices_in"], report["vertices_out"]), (36, 8))
        self.assertEqual((report["open_edges_in"], report["components_in"]), (0, 1))

    def test_what_the_kernel_says_is_told(self):
        path = self.file("inward.iff")
        job_files.write_surface(path, job_files.box_corners(LOW, HIGH),
                                [facet[::-1] for facet in job_files.BOX_FACETS])
        run = self.heal(path, spelled(self.out))
        report = run.object()
        self.assertEqual(len(report["warnings"]), 1)
        self.assertIn("faced inwards", report["warnings"][0])
        self.assertAlmostEqual(report["volume_in"], -VOLUME, places=6)
        self.assertAlmostEqual(report["volume_out"], VOLUME, places=6)

    def test_check_writes_nothing_and_tells_by_its_exit_code(self):
        open_box = self.write_open_box()
        before = self.contents(self.folder)
        self.assertEqual(self.heal(self.box, "--check").code, 0)
        run = self.heal(open_box, "--check")
        self.assertEqual(run.code, 1)
        self.assert_one_line(run.err, "open.iff: healing would change it")
        self.assertEqual(run.object()["files_written"], [])
        self.assertEqual(self.heal(open_box, spelled(self.out), "--check").code, 1)
        self.assertEqual(self.contents(self.folder), before)

    def test_gap_within_the_tolerance_is_closed_and_a_wider_one_filled(self):
        corners = job_files.box_corners(LOW, HIGH)
        # The lid has corners of its own, a little above.
        corners += [(x, y, z + 0.125) for x, y, z in corners[4:]]
        facets = [facet if index not in (2, 3) else tuple(number + 4 for number in facet)
                  for index, facet in enumerate(job_files.BOX_FACETS)]
        path = self.file("lid.iff")
        job_files.write_surface(path, corners, facets)
        report = self.heal(path, spelled(self.out), tolerance="0.2").object()
        self.assertEqual((report["open_edges_in"], report["open_edges_out"]), (8, 0))
        self.assertEqual((report["facets_out"], report["vertices_out"]), (12, 8))

    def test_other_formats_are_converted_on_the_way_in_and_out(self):
        source = self.file("open.stl")
        corners = job_files.box_corners(LOW, HIGH)
        with open(source, "w", encoding="ascii") as file:
            file.write("solid box\n")
            for facet in job_files.BOX_FACETS[1:]:
                file.write("facet normal 0 0 0\nouter loop\n")
                for number in facet:
                    file.write("vertex %g %g %g\n" % corners[number])
                file.write("endloop\nendfacet\n")
            file.write("endsolid box\n")
        result = self.file("out.off")
        run = self.heal(source, spelled(result))
        self.assertEqual((run.code, run.err), (0, ""))
        with open(result, encoding="ascii") as file:
            self.assertEqual(file.readline(), "OFF\n")
            self.assertEqual(file.readline().split(), ["8", "12", "0"])
        self.assertEqual(self.heal(result, "--check").code, 0)

    def test_precision_that_the_output_does_not_hold_is_said(self):
        run = self.qzhost("--quiet", "heal", spelled(self.box), spelled(self.file("out.stl")),
                          "--tolerance", "0")
        self.assertEqual(run.code, 0, run.err)
        self.assertIn("rounded to single precision", run.out)

    def test_failure_keeps_what_stood_at_the_output_and_names_the_users_file(self):
        path = self.file("nan.ply")
        with open(path, "w", encoding="ascii") as file:
            file.write("ply\nformat ascii 1.0\nelement vertex 3\nproperty double x\n"
                       "property double y\nproperty double z\nelement face 1\n"
                       "property list uchar int vertex_indices\nend_header\n"
                       "0 0 nan\n1 0 0\n0 1 0\n3 0 1 2\n")
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        before = self.contents(self.folder)
        run = self.heal(path, spelled(self.out))
        self.assertEqual(run.code, 1, run.err)
        self.assertIs(run.object()["flag"], False)
        self.assert_one_line(run.err, run.object()["reason"])
        self.assertNotIn("temporary", run.err)
        self.assertEqual(self.contents(self.folder), before)

    def test_progress_goes_to_standard_error_and_nowhere_when_quiet(self):
        run = self.qzhost("heal", spelled(self.write_open_box()), spelled(self.out), "--tolerance",
                          "0.01")
        self.assertIn("Healing", run.err)
        self.assertNotIn("Healing", run.out)
        for line in ("open edges          3 -> 0", "holes filled        1", "mm^3"):
            self.assertIn(line, run.out)

    def assert_refused(self, code, part, *arguments):
        before = self.contents(self.folder)
        run = self.qzhost(*arguments)
        self.assertEqual(run.code, code, run.err)
        self.assert_one_line(run.err, part)
        self.assertEqual(run.out, "")
        self.assertEqual(self.contents(self.folder), before)
        self.assert_nothing_temporary_is_left()

    def test_wrong_arguments_are_named_in_one_line(self):
        box, out = spelled(self.box), spelled(self.out)
        for part, *arguments in (
                ("-1 is not a number from 0 up", box, out, "--tolerance", "-1"),
                ("-0.5 is not a number from 0 up", box, out, "--tolerance=-0.5"),
                ("nan is not a number from 0 up", box, out, "--tolerance", "nan"),
                ("--tolerance is required", box, out),
                ("OUT is required", box, "--tolerance", "1"),
                ("no mesh format has this extension", box, spelled(self.file("out.txt")),
                 "--tolerance", "1"),
                ("none.iff: cannot be opened", spelled(self.file("none.iff")), out, "--tolerance",
                 "1"),
                ("cannot be written", box, spelled(self.file("none/out.iff")), "--tolerance", "1"),
                ("is a directory", box, spelled(self.file("folder.iff")), "--tolerance", "1")):
            os.makedirs(self.file("folder.iff"), exist_ok=True)
            self.assert_refused(2, part, "heal", *arguments)

    def test_output_over_input_is_refused_under_any_name(self):
        os.mkdir(self.file("sub"))
        os.link(self.box, self.file("linked.iff"))
        names = ["box.iff", "sub/../box.iff", "linked.iff"]
        if not WINDOWS:
            os.symlink(self.box, self.file("pointing.iff"))
            names.append("pointing.iff")
        for name in names:
            self.assert_refused(2, "is the input itself", "heal", spelled(self.box),
                                spelled(self.file(name)), "--tolerance", "1")

    @unittest.skipIf(WINDOWS, "the emulator's links are the system's own, tested there")
    def test_link_at_the_output_stays_and_leads_to_the_result(self):
        os.symlink(self.out, self.file("pointing.iff"))
        self.assertEqual(self.heal(self.box, self.file("pointing.iff")).code, 0)
        self.assertTrue(os.path.islink(self.file("pointing.iff")))
        self.assertEqual(self.read(self.out), self.read(self.box))

"""Silhouettes and spun outlines through the built libraries, and what becomes of curves files."""

import math
import os
import re
import struct
import unittest

import job_files
from harness import WINDOWS, SystemTest, spelled

LOW, HIGH = (0, 0, 0), (40, 20, 10)


def read_curves(path):
    """The header, the points, and the curves as lists of point numbers from 0."""
    with open(path, "rb") as file:
        data = file.read()
    header = b"binary curves" if data.startswith(b"binary curves") else b"binary tree_curves"
    if not data.startswith(header):
        raise ValueError(path + " holds no curves")
    place = len(header) + 8
    (count,) = struct.unpack_from("<i", data, len(header))
    points = [struct.unpack_from("<3d", data, place + 24 * i) for i in range(count)]
    place += 24 * count
    curves = []
    while place < len(data):
        (count,) = struct.unpack_from("<i", data, place)
        place += 4 if header == b"binary curves" else 12
        segments = [struct.unpack_from("<ii", data, place + 8 * i) for i in range(count)]
        place += 8 * count
        curves.append([start - 1 for start, _ in segments])
    return header.decode(), points, curves


def area(points, curve):
    total = 0.0
    for number, start in enumerate(curve):
        end = curve[(number + 1) % len(curve)]
        total += points[start][0] * points[end][1] - points[start][1] * points[end][0]
    return total / 2


class OutlineTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_box(self.box, LOW, HIGH)
        self.out = self.file("out.curves")

    def outline(self, command, source, result=None, *options, distance="0"):
        run = self.qzhost("--json", "--quiet", command, spelled(source),
                          spelled(result or self.out), "--distance", distance, *options)
        self.assert_nothing_temporary_is_left()
        return run

    def write_frame(self, name="frame.iff", low=(0, 0, 0), scale=1):
        """Four bars around a hole 20 wide and 10 deep, 40 x 20 outside; they overlap."""
        vertices, facets = [], []
        for bar in (((0, 0, 0), (40, 5, 3)), ((0, 15, 1), (40, 20, 3)), ((0, 0, 0), (10, 20, 2)),
                    ((30, 0, 0), (40, 20, 2))):
            first = len(vertices)
            vertices += [tuple(low[axis] + scale * corner[axis] for axis in range(3))
                         for corner in job_files.box_corners(*bar)]
            facets += [tuple(first + number for number in facet) for facet in job_files.BOX_FACETS]
        path = self.file(name)
        job_files.write_surface(path, vertices, facets)
        return path

    def write_nan(self):
        path = self.file("nan.iff")
        job_files.write_surface(path, [(0, 0, 0), (1, 0, 0), (0, float("nan"), 1)], [(0, 1, 2)])
        return path

    def keep_something_at_the_output(self):
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        return self.contents(self.folder)


class Silhouette(OutlineTest):
    def test_of_a_box_is_its_base(self):
        run = self.outline("silhouette", self.box)
        self.assertEqual((run.code, run.err), (0, ""))
        header, points, curves = read_curves(self.out)
        self.assertEqual(header, "binary tree_curves")
        self.assertEqual(len(curves), 1)
        self.assertEqual({points[number] for number in curves[0]},
                         {(0, 0, 0), (40, 0, 0), (40, 20, 0), (0, 20, 0)})
        self.assertEqual(area(points, curves[0]), 800)
        report = run.object()
        self.assertEqual((report["flag"], report["cancelled"]), (True, False))
        self.assertEqual((report["curves"], report["points"], report["holes"]), (1, 4, 0))
        self.assertEqual((report["length"], report["area"]), (120, 800))
        self.assertEqual((report["facets_in"], report["vertices_in"]), (12, 8))
        self.assertEqual(report["output_format"], "binary tree_curves")
        self.assertEqual(report["files_written"], [spelled(self.out)])
        self.assertEqual(report["open_streams"], [])

    def test_hole_is_counted_and_taken_from_the_area(self):
        report = self.outline("silhouette", self.write_frame()).object()
        self.assertEqual((report["curves"], report["holes"], report["points"]), (2, 1, 8))
        self.assertAlmostEqual(report["area"], 40 * 20 - 20 * 10, places=9)
        self.assertAlmostEqual(report["length"], 120 + 60, places=9)

    def test_far_away_and_out_of_scale_is_the_same_moved_and_leaves_the_input_alone(self):
        for low, scale, units in (((30000, -7000, 800), 1, "mm"), ((0, 0, 0), 1000, "mm"),
                                  ((25, 25, 25), 1, "inch")):
            with self.subTest(low=low, scale=scale):
                frame = self.write_frame(low=low, scale=scale)
                before = self.contents(self.folder)["frame.iff"]
                run = self.outline("silhouette", frame, self.out, "--units", units)
                self.assertEqual((run.code, run.err), (0, ""))
                self.assertEqual(run.object()["open_streams"], [])
                self.assertEqual(self.contents(self.folder)["frame.iff"], before)
                _, points, curves = read_curves(self.out)
                self.assertEqual([len(curve) for curve in curves], [4, 4])
                within = 1e-9 * 45 * scale + 1e-11
                corners = [(0, 0), (40, 0), (40, 20), (0, 20), (10, 5), (30, 5), (30, 15), (10, 15)]
                for x, y in corners:
                    self.assertLess(
                        min(math.dist(point, (low[0] + scale * x, low[1] + scale * y, low[2]))
                            for point in points), within, (x, y))

    def test_distance_drops_points(self):
        path = self.file("ball.off")
        count = 90
        ring = [(10 * math.cos(2 * math.pi * i / count), 10 * math.sin(2 * math.pi * i / count))
                for i in range(count)]
        with open(path, "w", encoding="ascii") as file:
            file.write("OFF\n%d %d 0\n0 0 5\n" % (count + 1, count))
            for x, y in ring:
                file.write("%.17g %.17g 0\n" % (x, y))
            for i in range(count):
                file.write("3 0 %d %d\n" % (i + 1, (i + 1) % count + 1))
        self.assertEqual(self.outline("silhouette", path).object()["points"], count)
        report = self.outline("silhouette", path, distance="0.1").object()
        # A chord that is 0.1 off a circle of radius 10 spans 16.2 degrees.
        self.assertLess(report["points"], count / 2)
        self.assertGreater(report["points"], 360 / 16.3 - 1)

    def test_upright_surface_has_no_outline(self):
        path = self.file("wall.iff")
        job_files.write_surface(path, [(0, 0, 0), (9, 0, 0), (9, 0, 9)], [(0, 1, 2)])
        run = self.outline("silhouette", path)
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual((run.object()["curves"], run.object()["area"]), (0, 0))
        self.assertEqual(run.object()["warnings"], ["the surface has no shadow"])
        self.assertEqual(read_curves(self.out), ("binary tree_curves", [], []))

    def test_kernels_error_is_the_reason_and_the_older_file_stays(self):
        path = self.write_nan()
        before = self.keep_something_at_the_output()
        run = self.outline("silhouette", path)
        # The add-in's flag is true all the same.
        self.assertEqual((run.code, run.object()["flag"]), (4, True))
        self.assert_one_line(run.err, "vertex 3: a coordinate is not finite")
        self.assertEqual(run.object()["files_written"], [])
        self.assertEqual(self.contents(self.folder), before)

    def test_surface_without_facets_has_no_outline(self):
        path = self.file("empty.iff")
        job_files.write_surface(path, [], [])
        run = self.outline("silhouette", path)
        self.assertEqual((run.code, run.object()["curves"]), (0, 0))

    def test_text_and_progress(self):
        run = self.qzhost("silhouette", spelled(self.write_frame()), spelled(self.out),
                          "--distance", "0", "--units", "inch")
        self.assertEqual(run.code, 0, run.err)
        for line in ("curves       2", "holes        1", "length       180.000 inch",
                     "area         600.000 inch^2", "(binary tree_curves)"):
            self.assertIn(line, run.out)
        self.assertTrue(run.err)
        self.assertEqual(self.qzhost("--quiet", "silhouette", spelled(self.box), spelled(self.out),
                                     "--distance", "0").err, "")


class SpinSilhouette(OutlineTest):
    def test_of_a_box_across_the_axis_stands_on_the_axis(self):
        job_files.write_box(self.box, (1, -2, -3), (11, 2, 3))
        for mode, header in (("0", "binary curves"), ("1", "binary tree_curves")):
            run = self.outline("spin-silhouette", self.box, self.out, "--mode", mode)
            self.assertEqual((run.code, run.err), (0, ""))
            variant, points, curves = read_curves(self.out)
            self.assertEqual((variant, len(curves)), (header, 1))
            self.assertAlmostEqual(area(points, curves[0]), 10 * math.sqrt(13), places=9)
            report = run.object()
            self.assertEqual((report["mode"], report["curves"], report["holes"]),
                             (int(mode), 1, 0))
            self.assertAlmostEqual(report["length"], 20 + 2 * math.sqrt(13), places=9)
        self.assertEqual(self.outline("spin-silhouette", self.box).object()["output_format"],
                         "binary curves")

    def test_far_along_the_axis_is_the_same_moved_in_either_variant(self):
        job_files.write_box(self.box, (90001, 5, -1), (90004, 7, 1))
        for mode in ("0", "1"):
            run = self.outline("spin-silhouette", self.box, self.out, "--mode", mode)
            self.assertEqual((run.code, run.err), (0, ""))
            _, points, curves = read_curves(self.out)
            corners = [(x, r) for x in (90001, 90004) for r in (5, math.sqrt(50))]
            self.assertEqual(len(curves[0]), 4)
            for x, r in corners:
                self.assertLess(min(math.dist(point, (x, r, 0)) for point in points), 1e-8)

    def test_surface_without_facets_is_refused(self):
        path = self.file("empty.iff")
        job_files.write_surface(path, [], [])
        before = self.keep_something_at_the_output()
        run = self.outline("spin-silhouette", path)
        self.assertEqual((run.code, run.object()["flag"]), (1, False))
        self.assert_one_line(run.err, "empty.iff: has no facets")
        self.assertEqual(self.contents(self.folder), before)

    def test_failed_run_far_away_leaves_neither_a_result_nor_anything_temporary(self):
        path = self.file("nan.iff")
        job_files.write_surface(path, [(90000, 0, 0), (90001, 0, 0), (90000, float("nan"), 1)],
                                [(0, 1, 2)])
        before = self.keep_something_at_the_output()
        run = self.outline("spin-silhouette", path)
        self.assertEqual((run.code, run.object()["flag"]), (4, True))
        self.assert_one_line(run.err, "vertex 3: a coordinate is not finite")
        # The add-in leaves the stream on its unfinished file open, as agreed.
        self.assertEqual(run.object()["open_streams"], [])
        self.assertEqual(self.contents(self.folder), before)


class Drawings(OutlineTest):
    def drawn_path(self, name):
        with open(self.file(name), encoding="ascii") as file:
            text = file.read()
        pieces = re.findall(r"M[^Z]*Z", re.search(r' d="([^"]*)"', text).group(1))
        return text, [[tuple(map(float, pair.split())) for pair in re.split("[ML]", piece[1:-1])]
                      for piece in pieces]

    def test_outline_becomes_a_drawing_in_one_go(self):
        frame = self.write_frame()
        run = self.outline("silhouette", frame, self.file("frame.svg"))
        self.assertEqual((run.code, run.object()["output_format"]), (0, "SVG"))
        text, curves = self.drawn_path("frame.svg")
        self.assertIn('viewBox="-0.8 -20.8 41.6 21.6"', text)
        self.assertIn('width="41.6mm" height="21.6mm"', text)
        self.assertEqual({point for curve in curves for point in curve},
                         {(0, 0), (40, 0), (40, -20), (0, -20), (10, -5), (30, -5), (30, -15),
                          (10, -15)})
        run = self.outline("silhouette", frame, self.file("frame.dxf"))
        self.assertEqual((run.code, run.object()["output_format"]), (0, "DXF"))

    def test_converted_curves_are_the_same_drawing(self):
        frame = self.write_frame()
        self.assertEqual(self.outline("silhouette", frame).code, 0)
        for name in ("frame.svg", "frame.dxf"):
            self.assertEqual(self.outline("silhouette", frame, self.file(name)).code, 0)
            run = self.qzhost("convert", spelled(self.out), spelled(self.file("of_" + name)))
            self.assertEqual((run.code, run.err), (0, ""))
            files = self.contents(self.folder)
            self.assertEqual(files["of_" + name], files[name])

    def test_info_tells_holes_from_islands(self):
        self.outline("silhouette", self.write_frame())
        run = self.qzhost("info", spelled(self.out))
        self.assertEqual((run.code, run.err), (0, ""))
        for part in ("curves (binary tree_curves)", "curves 2, of these holes 1",
                     "area 600 mm^2", "hole of curve 1, points 4, clockwise, length 60 mm, area -200"):
            self.assertIn(part, run.out)
        curves = self.qzhost("--json", "info", spelled(self.out)).object()["files"][0]["curves"]
        self.assertEqual([curve["inside"] for curve in curves], [None, 1])

    def test_damaged_curves_are_named_with_the_byte(self):
        self.outline("silhouette", self.box)
        with open(self.out, "rb") as file:
            whole = file.read()
        bad = {"short.curves": (whole[:-1], "the file ends within the curve's segments"),
               "closed.curves": (whole[:-4] + struct.pack("<i", 2), "the curve ends at point 2"),
               "number.curves": (whole[:-4] + struct.pack("<i", 5), "is not in 1..4"),
               "many.curves": (b"binary curves" + struct.pack("<ii", 2**31 - 1, 0),
                               "2147483647 announced, room for 0"),
               "header.curves": (b"binary tree", "the file ends within the header"),
               "other.curves": (b"something else altogether", "the header is neither"),
               "empty.curves": (b"", "the file ends within the header")}
        for name, (data, reason) in bad.items():
            with open(self.file(name), "wb") as file:
                file.write(data)
        before = self.contents(self.folder)
        for name, (_, reason) in bad.items():
            for arguments in (("info", spelled(self.file(name))),
                              ("convert", spelled(self.file(name)), spelled(self.file("a.svg")))):
                run = self.qzhost(*arguments)
                self.assertEqual((run.code, run.out), (2, ""))
                self.assert_one_line(run.err, name + ": ", reason, " (byte ")
        self.assertEqual(self.contents(self.folder), before)


class WrongArguments(OutlineTest):
    def assert_refused(self, part, *arguments):
        before = self.contents(self.folder)
        run = self.qzhost(*arguments)
        self.assertEqual((run.code, run.out), (2, ""), (arguments, run.err))
        self.assert_one_line(run.err, part)
        self.assertEqual(self.contents(self.folder), before)
        self.assert_nothing_temporary_is_left()

    def test_are_named_in_one_line(self):
        box, out = spelled(self.box), spelled(self.out)
        os.makedirs(self.file("folder.svg"))
        for command in ("silhouette", "spin-silhouette"):
            for part, *arguments in (
                    ("-1 is not a number from 0 up", box, out, "--distance", "-1"),
                    ("nan is not a number from 0 up", box, out, "--distance", "nan"),
                    ("--distance is required", box, out),
                    ("OUT is required", box, "--distance", "1"),
                    ("is the input itself", box, box, "--distance", "1"),
                    ("curves are no mesh", box, spelled(self.file("out.stl")), "--distance", "1"),
                    ("is a directory", box, spelled(self.file("folder.svg")), "--distance", "1"),
                    ("none.iff: cannot be opened", spelled(self.file("none.iff")), out,
                     "--distance", "1"),
                    ("cannot be written", box, spelled(self.file("none/out.svg")), "--distance",
                     "1")):
                self.assert_refused(part, command, *arguments)
        for mode in ("2", "-1", "x", "0.5"):
            self.assert_refused("--mode", "spin-silhouette", box, out, "--distance", "1", "--mode",
                                mode)
        self.assert_refused("--mode", "silhouette", box, out, "--distance", "1", "--mode", "1")

    def test_input_that_cannot_be_read_is_named(self):
        for name, data in (("empty.iff", b""), ("empty.stl", b""), ("short.iff", b"binary surf"),
                           ("curves.iff", b"binary curves" + bytes(8))):
            with open(self.file(name), "wb") as file:
                file.write(data)
            for command in ("silhouette", "spin-silhouette"):
                self.assert_refused(name + ": ", command, spelled(self.file(name)),
                                    spelled(self.out), "--distance", "1")


class OtherAddIns(OutlineTest):
    """Commands that judge the file and not the flag."""

    def setUp(self):
        super().setUp()
        mesh = self.file("mesh.iff")
        with open(mesh, "wb") as file:
            file.write(b"of an earlier run")
        self.before = self.keep_something_at_the_output()
        self.commands = (("silhouette", self.out), ("spin-silhouette", self.out), ("offset", mesh))

    def run_with(self, words, command, result):
        angle = ("--angle", "7") if command == "offset" else ()
        run = self.qzhost("--json", "--quiet", command, spelled(self.box), spelled(result),
                          "--distance", "0.25", *angle, addin=words)
        self.assert_nothing_temporary_is_left()
        return run

    def assert_output_is_kept(self, words, code, flag, reason):
        for command in self.commands:
            run = self.run_with(words, *command)
            self.assertEqual(run.code, code, (command, run.err))
            self.assertIs(run.object()["flag"], flag)
            self.assertEqual(run.object()["files_written"], [])
            self.assert_one_line(run.err, reason)
            self.assertEqual(self.contents(self.folder), self.before)

    def test_box_is_that_of_the_mesh(self):
        for command, result in self.commands:
            last = {"silhouette": 0, "spin-silhouette": 0, "offset": 7}[command]
            run = self.run_with("arguments", command, result)
            self.assert_one_line(run.err, "box 0 0 0 to 40 20 10, distance 0.25, %d" % last)

    def test_add_in_that_spoils_its_input_has_a_copy(self):
        for command in self.commands:
            self.assertEqual(self.run_with("succeed spoil", *command).code, 0)
            self.assertEqual(self.contents(self.folder)["box.iff"], self.before["box.iff"])

    def test_result_takes_the_place_of_an_older_one(self):
        for command, result in self.commands:
            run = self.run_with("succeed", command, result)
            self.assertEqual((run.code, run.err), (0, ""))
            self.assertEqual(run.object()["files_written"], [spelled(result)])
        self.assertEqual(read_curves(self.out)[2], [[0, 1, 2]])
        self.assertEqual(self.contents(self.folder)["mesh.iff"], self.before["box.iff"])

    def test_stream_that_is_left_open_on_the_result_is_closed(self):
        for command in self.commands:
            run = self.run_with("succeed leak-result", *command)
            self.assertEqual((run.code, run.object()["open_streams"]), (0, []))

    def test_success_without_a_result(self):
        self.assert_output_is_kept("nothing", 4, True, "has made no result")

    def test_success_without_a_result_has_the_kernels_reason(self):
        self.assert_output_is_kept("nothing kernel=open-mesh", 4, True, "open-mesh")

    def test_success_with_an_unreadable_result(self):
        self.assert_output_is_kept("garbage", 4, True, ": the ")

    def test_failure_with_a_result(self):
        self.assert_output_is_kept("partial", 1, False, "gives no reason")

    def test_exception_out_of_the_add_in(self):
        self.assert_output_is_kept("throw", 1, False, "thrown by the test")

    @unittest.skipIf(WINDOWS, "no console event reaches a program under the emulator")
    def test_stop_keeps_what_stood_at_the_output(self):
        self.assert_output_is_kept("interrupt succeed", 3, True, "stopped by the user")
        self.assert_output_is_kept("interrupt partial", 3, False, "stopped by the user")

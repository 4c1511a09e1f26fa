"""The files of filter and heal: every format in and out, input that is damaged, stops and places
that do not serve."""

import os
import struct
import unittest

import job_files
from harness import EMULATOR, WINDOWS, SystemTest, spelled

CORNERS = job_files.box_corners((0, 0, 0), (4, 3, 2))
# Bottom, top and the four sides.
COLOURS = [5] * 4 + [200] * 6 + [255] * 2

ONE_FACET = ("facet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\n"
             "endfacet\n")
PLY_HEADER = ("ply\nformat ascii 1.0\nelement vertex 3\nproperty double x\nproperty double y\n"
              "property double z\nelement face 1\nproperty list uchar int vertex_indices\n"
              "end_header\n")
DAMAGED = {
    "header.iff": b"binary surf",
    "other_header.iff": b"binary curves!" + bytes(100),
    "vertices.iff": b"binary surface" + struct.pack("<ii3d", 2, 1, 0, 0, 0),
    "facet.iff": b"binary surface" + struct.pack("<ii9d3iB", 3, 1, *[0] * 9, 1, 2, 4, 0),
    "many.tmp": b"binary surface" + struct.pack("<ii", 2**31 - 1, 2**31 - 1),
    "ascii.stl": ("solid a\n" + ONE_FACET[:40]).encode(),
    "number.stl": ("solid a\n" + ONE_FACET.replace("1 0 0", "1 zero 0")).encode(),
    "binary.stl": bytes(80) + struct.pack("<I", 3) + bytes(50),
    "vertex.ply": (PLY_HEADER + "0 0 0\n1 0 0\n").encode(),
    "index.ply": (PLY_HEADER + "0 0 0\n1 0 0\n0 1 0\n3 0 1 3\n").encode(),
    "many.ply": PLY_HEADER.replace("vertex 3", "vertex 4000000000").encode(),
    "index.obj": b"v 0 0 0\nv 1 0 0\nf 1 2 3\n",
    "number.obj": b"v 0 0 zero\n",
    "vertex.off": b"OFF\n3 1 0\n0 0 0\n1 0 0\n",
    "index.off": b"OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 3\n",
    "empty.iff": b"", "empty.stl": b"", "empty.ply": b"", "empty.off": b"",
    "words.stl": b"nothing of the kind\n", "words.ply": b"nothing of the kind\n",
}


class SurfaceFiles(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_surface(self.box, CORNERS, job_files.BOX_FACETS, COLOURS)
        self.out = self.file("out.iff")

    def commands(self, source, result):
        return (("filter", spelled(source), spelled(result), "--colour", "200"),
                ("heal", spelled(source), spelled(result), "--tolerance", "0.01"))

    def keep_something_at_the_output(self):
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")

    def assert_refused(self, code, part, *arguments, **options):
        before = self.contents(self.folder)
        run = self.qzhost("--quiet", *arguments, **options)
        self.assertEqual((run.code, run.out), (code, ""), (arguments, run.err))
        self.assert_one_line(run.err, part)
        self.assertEqual(self.contents(self.folder), before)
        self.assert_nothing_temporary_is_left()

    def test_damaged_input_of_every_format_is_named_and_the_output_kept(self):
        self.keep_something_at_the_output()
        for name, data in DAMAGED.items():
            with open(self.file(name), "wb") as file:
                file.write(data)
        for name in DAMAGED:
            for arguments in self.commands(self.file(name), self.out):
                with self.subTest(name=name, command=arguments[0]):
                    self.assert_refused(2, name + ": ", *arguments)

    def described(self, path):
        return self.qzhost("--json", "info", spelled(path)).object()["files"][0]

    def convert(self, source, name):
        result = self.file(name)
        self.assertEqual(self.qzhost("convert", spelled(source), spelled(result)).code, 0)
        return result

    def test_every_format_is_read_and_written_with_its_colours(self):
        formats = ["iff", "ply", "obj", "off", "tmp"]
        for source, result in zip(formats, formats[1:] + formats[:1]):
            with self.subTest(source=source, result=result):
                given = self.convert(self.box, "given." + source)
                for command in self.commands(given, self.file("result." + result)):
                    run = self.qzhost("--json", "--quiet", *command)
                    self.assertEqual((run.code, run.err), (0, ""))
                    self.assert_nothing_temporary_is_left()
                    kept = [200] if command[0] == "filter" else [5, 200, 255]
                    mesh = self.described(self.file("result." + result))
                    self.assertEqual([(each["colour"], each["facets"]) for each in mesh["colours"]],
                                     [(colour, COLOURS.count(colour)) for colour in kept])
                    self.assertEqual(run.object()["facets_out"], mesh["facets"])

    def test_format_without_colours_is_read_and_written_with_a_word_about_them(self):
        stl = self.file("result.stl")
        run = self.qzhost("--quiet", *self.commands(self.box, stl)[1])
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertIn("the format has no colours: they are lost", run.out)
        self.assertEqual(os.path.getsize(stl), 84 + 12 * 50)
        # What has no colour counts as 0.
        run = self.qzhost("--json", "--quiet", "filter", spelled(stl), spelled(self.out),
                          "--colour", "0")
        self.assertEqual((run.code, run.object()["facets_out"]), (0, 12))
        self.assertEqual(job_files.read_surface(self.out)[2], [0] * 12)
        self.assert_nothing_temporary_is_left()

    @unittest.skipIf(WINDOWS, "no console event reaches a program under the emulator")
    def test_stop_while_the_result_is_made_keeps_what_stood_at_the_output(self):
        self.keep_something_at_the_output()
        before = self.contents(self.folder)
        for command in self.commands(self.box, self.out):
            run = self.qzhost("--json", "--quiet", *command, addin="interrupt succeed")
            self.assertEqual(run.code, 3)
            self.assert_one_line(run.err, "stopped by the user")
            report = run.object()
            self.assertEqual((report["flag"], report["cancelled"]), (True, True))
            self.assertEqual(report["files_written"], [])
            self.assertEqual(self.contents(self.folder), before)
            self.assert_nothing_temporary_is_left()

    @unittest.skipIf(EMULATOR, "the emulator has a temporary directory of its own")
    def test_temporary_directory_that_does_not_serve_is_named(self):
        self.keep_something_at_the_output()
        for code, part, place in (
                (2, "the temporary directory's name is too long",
                 os.path.join(self.temporary, *["x" * 100] * 3)),
                (1, "cannot be made", self.file("none"))):
            if place.startswith(self.temporary):
                os.makedirs(place)
            self.environment.update(TMPDIR=place, TMP=place, TEMP=place)
            for command in self.commands(self.box, self.out):
                before = self.contents(self.folder)
                run = self.qzhost("--quiet", *command)
                self.assertEqual((run.code, run.out), (code, ""), run.err)
                self.assert_one_line(run.err, part)
                self.assertEqual(self.contents(self.folder), before)
                self.assertEqual(os.listdir(place) if os.path.isdir(place) else [], [])

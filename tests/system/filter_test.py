"""Filtering surfaces by colour through the built libraries."""

import job_files
from harness import SystemTest, spelled

CORNERS = job_files.box_corners((0, 0, 0), (4, 3, 2))
# Bottom, top and the four sides in a colour each.
COLOURS = [0, 0, 5, 5, 127, 127, 128, 128, 200, 200, 255, 255]


class Filter(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_own_temporary_directory()
        self.box = self.file("box.iff")
        job_files.write_surface(self.box, CORNERS, job_files.BOX_FACETS, COLOURS)
        self.out = self.file("out.iff")

    def filter(self, *colours, source=None, result=None):
        run = self.qzhost("--json", "--quiet", "filter", spelled(source or self.box),
                          spelled(result or self.out), "--colour", *colours)
        self.assert_nothing_temporary_is_left()
        return run

    def assert_kept(self, colours):
        """Facets of these colours in their order, with all of the input's vertices."""
        kept = [index for index, colour in enumerate(COLOURS) if colour in colours]
        job_files.write_surface(self.file("expected.iff"), CORNERS,
                                [job_files.BOX_FACETS[index] for index in kept],
                                [COLOURS[index] for index in kept])
        files = self.contents(self.folder)
        self.assertEqual(files["out.iff"], files["expected.iff"])

    def test_only_facets_of_the_colours_are_kept(self):
        run = self.filter("5", "0")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assert_kept({0, 5})
        report = run.object()
        self.assertEqual((report["facets_in"], report["facets_out"]), (12, 4))
        # Bottom and top, which share no edge.
        self.assertEqual((report["components_in"], report["components_out"]), (1, 2))
        self.assertEqual((report["open_edges_in"], report["open_edges_out"]), (0, 8))
        self.assertEqual((report["holes_in"], report["holes_out"]), (0, 2))
        self.assertEqual(report["colours"], [{"colour": 0, "facets": 2, "area": 12.0},
                                             {"colour": 5, "facets": 2, "area": 12.0}])
        self.assertEqual(report["files_written"], [spelled(self.out)])
        self.assertEqual(report["open_streams"], [])

    def test_memory_is_its_own_and_not_that_of_the_program_that_starts_it(self):
        held = bytearray(b"x" * (512 << 20))
        peak = self.filter("5").object()["peak_memory"]
        self.assertGreater(peak, 1 << 20)
        self.assertLess(peak, len(held) // 2)

    def test_every_colour_of_a_byte_is_told_from_the_others(self):
        for colour in sorted(set(COLOURS)):
            self.assertEqual(self.filter(str(colour)).code, 0)
            self.assert_kept({colour})

    def test_colour_that_is_named_twice_counts_once(self):
        self.assertEqual(self.filter("255", "255", "--color", "255,128").code, 0)
        self.assert_kept({128, 255})

    def test_colour_that_no_facet_has_leaves_the_vertices(self):
        run = self.qzhost("--quiet", "filter", spelled(self.box), spelled(self.out), "--colour",
                          "6")
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertIn("colour 6: no facet has it", run.out)
        self.assert_kept(set())

    def test_other_formats_are_converted_on_the_way_in_and_out(self):
        source, result = self.file("box.obj"), self.file("out.obj")
        with open(source, "w", encoding="ascii") as file:
            for corner in CORNERS:
                file.write("v %d %d %d\n" % corner)
            for facet, colour in zip(job_files.BOX_FACETS, COLOURS):
                file.write("usemtl colour_%d\nf %d %d %d\n"
                           % (colour, *(number + 1 for number in facet)))
        run = self.filter("200", source=source, result=result)
        self.assertEqual((run.code, run.err), (0, ""))
        with open(result, encoding="ascii") as file:
            lines = [line.split() for line in file]
        self.assertEqual([line[1] for line in lines if line[0] == "usemtl"], ["colour_200"])
        self.assertEqual(len([line for line in lines if line[0] == "f"]), 2)

    def test_surface_without_facets_fails_and_keeps_what_stood_at_the_output(self):
        empty = self.file("empty.iff")
        job_files.write_surface(empty, CORNERS, [])
        with open(self.out, "wb") as file:
            file.write(b"of an earlier run")
        before = self.contents(self.folder)
        run = self.filter("5", source=empty)
        self.assertEqual(run.code, 1)
        self.assert_one_line(run.err, "empty.iff: has no facets")
        self.assertIs(run.object()["flag"], False)
        self.assertEqual(self.contents(self.folder), before)

    def test_wrong_arguments_are_named_in_one_line(self):
        before = self.contents(self.folder)
        box, out = spelled(self.box), spelled(self.out)
        for part, *arguments in (
                ("Value 300 not in range 0 to 255", box, out, "--colour", "300"),
                ("Value 256 not in range 0 to 255", box, out, "--colour", "5", "256"),
                ("Value -1 not in range 0 to 255", box, out, "--colour", "-1"),
                ("not in range 0 to 255", box, out, "--colour", "red"),
                ("--colour is required", box, out),
                ("--colour", box, out, "--colour"),
                ("OUT is required", box, "--colour", "5"),
                ("is the input itself", box, box, "--colour", "5"),
                ("is the input itself", box, spelled(self.file("temporary/../box.iff")),
                 "--colour", "5")):
            run = self.qzhost("filter", *arguments)
            self.assertEqual(run.code, 2, (arguments, run.err))
            self.assertEqual(run.out, "")
            self.assert_one_line(run.err, part)
        self.assertEqual(self.contents(self.folder), before)

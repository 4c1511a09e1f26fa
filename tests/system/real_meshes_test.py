"""Damaged meshes of other programs, which scripts/fetch-samples.sh fetches, healed and looked at."""

import os

import job_files
from harness import SystemTest, spelled

MESHES = os.environ.get("QZ_MESHES", "")


def edges(facets):
    """How often each edge is run through, by its vertices in the order of the run."""
    counts = {}
    for a, b, c in facets:
        for edge in ((a, b), (b, c), (c, a)):
            counts[edge] = counts.get(edge, 0) + 1
    return counts


class RealMeshes(SystemTest):
    def heal(self, name):
        source = os.path.join(MESHES, name)
        if not os.path.isfile(source):
            self.skipTest("QZ_MESHES names no directory with " + name
                          + "; without a package server it cannot be fetched")
        out = self.file("out.iff")
        run = self.qzhost("--json", "--quiet", "heal", spelled(source), spelled(out),
                          "--tolerance", "0.001")
        self.assertEqual((run.code, run.err), (0, ""))
        report = run.object()
        vertices, facets, _ = job_files.read_surface(out)
        self.assertEqual((len(vertices), len(facets)),
                         (report["vertices_out"], report["facets_out"]))
        runs = edges(facets)
        closed = all(count == 1 and runs.get(edge[::-1]) == 1 for edge, count in runs.items())
        self.assertEqual(closed, report["open_edges_out"] == 0
                         and report["non_manifold_edges_out"] == 0
                         and report["flipped_facets_out"] == 0)
        # Either it bounds a solid, or the kernel has said what is left.
        self.assertTrue(closed or report["warnings"], report)
        if closed:
            self.assertAlmostEqual(job_files.volume(vertices, facets) / report["volume_out"], 1.0,
                                   places=9)
            self.assertGreater(report["volume_out"], 0)
        return report

    def test_shark_with_four_holes(self):
        report = self.heal("mech-holes-shark.off")
        self.assertEqual((report["facets_in"], report["vertices_in"]), (10192, 5246))
        self.assertEqual((report["open_edges_in"], report["open_edges_out"]), (304, 0))
        self.assertEqual((report["holes_in"], report["holes_filled"]), (4, 4))

    def test_pig_of_seventeen_pieces(self):
        report = self.heal("pig.stl")
        self.assertEqual((report["open_edges_in"], report["open_edges_out"]), (1296, 0))
        self.assertEqual(report["components_in"], 17)

    def test_wing(self):
        self.heal("bad-stl-wing.stl")

    def test_tardis(self):
        self.heal("bad-stl-tardis.stl")

    def test_vice_bar(self):
        self.heal("bad-stl-pcbvicebar.stl")

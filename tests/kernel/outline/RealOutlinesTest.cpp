// Outlines of other programs' meshes, which scripts/fetch-samples.sh fetches, against what upright
// lines find facet by facet.

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "OutlineRun.h"
#include "RasterWitness.h"
#include "formats/meshes/MeshFile.h"

namespace outline_test {
namespace {

using Place = std::array<double, 3>;

std::string PathOf(const std::string& name) {
  const char* meshes = std::getenv("QZ_MESHES");
  return std::string(meshes == nullptr ? "" : meshes) + "/" + name;
}

class RealShadow : public testing::TestWithParam<const char*> {};

TEST_P(RealShadow, IsWhatUprightLinesFind) {
  const std::string path = PathOf(GetParam());
  if (!std::filesystem::exists(path)) {
    GTEST_SKIP() << "QZ_MESHES names no directory with " << GetParam()
                 << "; without a package server it cannot be fetched";
  }
  const formats::Mesh mesh = formats::ReadMesh(path, 1);
  const SilhouetteResult run = RunSilhouette(mesh);
  ExpectSilent(run.dialog);
  const auto [low, high] = WidthOf(mesh);
  const RasterAreas areas =
      CompareAreas(low, high, 2000, run.curves, [&](double x) { return ShadowAt(mesh, x); });
  EXPECT_LE(areas.difference, 1e-9 * areas.witness);
  EXPECT_NEAR(Area(run.curves), areas.witness, 1e-3 * areas.witness);
}

INSTANTIATE_TEST_SUITE_P(Meshes, RealShadow,
                         testing::Values("mech-holes-shark.off", "pig.stl", "bad-stl-wing.stl",
                                         "bad-stl-tardis.stl", "bad-stl-pcbvicebar.stl"));

}  // namespace
}  // namespace outline_test

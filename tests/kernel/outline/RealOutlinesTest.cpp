// Outlines of other programs' meshes, which scripts/fetch-samples.sh fetches, against what upright
// lines find facet by facet.

#include <algorithm>
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

bool IsThere(const std::string& path) { return std::filesystem::exists(path); }

std::string Missing(const std::string& name) {
  return "QZ_MESHES names no directory with " + name +
         "; without a package server it cannot be fetched";
}

class RealShadow : public testing::TestWithParam<const char*> {};

TEST_P(RealShadow, IsWhatUprightLinesFind) {
  const std::string path = PathOf(GetParam());
  if (!IsThere(path)) GTEST_SKIP() << Missing(GetParam());
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

// From the z axis to the x axis.
formats::Mesh AlongX(const formats::Mesh& mesh) {
  return Mapped(mesh, [](const Place& v) { return Place{v[2], v[0], v[1]}; });
}

// Its head is 3 long and 5.5 wide, its thread 10 long and 3 wide.
TEST(RealSpin, OfAScrewIsWhatUprightLinesFind) {
  const std::string name = "M3x10_screw.stl";
  if (!IsThere(PathOf(name))) GTEST_SKIP() << Missing(name);
  const formats::Mesh screw = AlongX(formats::ReadMesh(PathOf(name), 1));
  const double distance = 1e-3;
  const SpinResult run = RunSpin(screw, distance);
  ExpectSilent(run.dialog);
  ASSERT_EQ(run.curves.curves.size(), 1U);
  const Curve& curve = run.curves.curves[0];
  const auto [left, right] = std::minmax_element(
      curve.begin(), curve.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
  EXPECT_NEAR(left->x, 0, 1e-9);
  EXPECT_NEAR(right->x, 13, 1e-9);
  const auto [least, most] = std::minmax_element(
      curve.begin(), curve.end(), [](const Point& a, const Point& b) { return a.y < b.y; });
  EXPECT_EQ(least->y, 0);
  EXPECT_NEAR(most->y, 2.75, 1e-6);
  const RasterAreas areas =
      CompareAreas(0, 13, 1300, run.curves, [&](double x) { return SpunAt(screw, x, true); });
  EXPECT_LE(areas.difference, distance * LengthOf(run.curves));
  EXPECT_NEAR(Area(run.curves), areas.witness, 1e-3 * areas.witness);
}

}  // namespace
}  // namespace outline_test

// Damaged meshes of other programs, which scripts/fetch-samples.sh fetches: each comes out closed
// and edge-manifold; what is left otherwise is warned of.

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "HealRun.h"
#include "formats/meshes/MeshFile.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

class RealMesh : public testing::TestWithParam<const char*> {};

TEST_P(RealMesh, ComesOutClosedOrIsReported) {
  const char* meshes = std::getenv("QZ_MESHES");
  const std::string path = std::string(meshes == nullptr ? "" : meshes) + "/" + GetParam();
  if (!std::filesystem::exists(path)) {
    GTEST_SKIP() << "QZ_MESHES names no directory with " << GetParam()
                 << "; without a package server it cannot be fetched";
  }
  const HealResult run = RunHeal(formats::ReadMesh(path, 3), 1e-6);
  EXPECT_TRUE(run.dialog.errors.empty());
  ASSERT_FALSE(run.mesh.facets.empty());
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(support::ZeroAreaFault(run.mesh), "");
  EXPECT_GT(support::Volume(run.mesh), 0);
  EXPECT_EQ(CountColour(run.mesh, 3), run.mesh.facets.size());
  for (const std::string& warning : run.dialog.warnings) {
    EXPECT_NE(warning.find(" pairs of facets that cross could not be parted"), std::string::npos)
        << warning;
  }
}

INSTANTIATE_TEST_SUITE_P(Heal, RealMesh,
                         testing::Values("mech-holes-shark.off", "pig.stl", "bad-stl-wing.stl",
                                         "bad-stl-tardis.stl", "bad-stl-pcbvicebar.stl"));

}  // namespace
}  // namespace heal_test

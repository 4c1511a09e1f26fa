// Input that cannot be healed: one fatal error that names the place, the older output untouched.

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

#include "HealRun.h"
#include "platform/IFHeal.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

formats::Mesh Cube() { return support::Box({0, 0, 0}, {1, 1, 1}, 1); }

void ExpectFatal(const HealResult& run, const std::string& part) {
  ASSERT_EQ(run.dialog.errors.size(), 1U);
  EXPECT_NE(run.dialog.errors[0].find(part), std::string::npos) << run.dialog.errors[0];
  EXPECT_EQ(run.output, kOlderOutput);
  EXPECT_EQ(run.names, (std::vector<std::string>{"in.iff", "out.iff"}));
}

TEST(HealBadInput, ToleranceThatIsNoLengthIsFatal) {
  for (const double tolerance : {-1e-300, -1.0, kNan, kInfinity, -kInfinity}) {
    ExpectFatal(RunHeal(Cube(), tolerance), "tolerance");
  }
}

TEST(HealBadInput, VertexThatIsNotFiniteIsNamed) {
  for (const double bad : {kNan, kInfinity, -kInfinity}) {
    formats::Mesh mesh = Cube();
    mesh.vertices[4][2] = bad;
    ExpectFatal(RunHeal(mesh, 0.01), "vertex 5");
  }
}

TEST(HealBadInput, FileCutShortAnywhereIsFatal) {
  const std::string whole = RunHeal(Cube(), 0.01).input;
  ASSERT_EQ(whole.size(), 14U + 8 + 8 * 24 + 12 * 13);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    ExpectFatal(RunHealOnBytes(whole.substr(0, size), 0.01), "in.iff");
  }
}

TEST(HealBadInput, VertexNumberBeyondTheFilesVerticesIsFatal) {
  std::string bytes = RunHeal(Cube(), 0.01).input;
  bytes[14 + 8 + 8 * 24] = 9;
  ExpectFatal(RunHealOnBytes(bytes, 0.01), "vertex number 9");
}

TEST(HealBadInput, SurfaceTooLargeToMeasureIsFatal) {
  formats::Mesh mesh = Cube();
  mesh.vertices[0][0] = -1e200;
  ExpectFatal(RunHeal(mesh, 0.01), "too large");
}

TEST(HealBadInput, MissingInputIsFatal) {
  const support::TempDirectory directory;
  HealDialog dialog;
  std::string input = (directory.Path() / "none.iff").string();
  std::string output = (directory.Path() / "out.iff").string();
  IFHeal(&dialog).Run(0.01, input.data(), output.data());
  ASSERT_EQ(dialog.errors.size(), 1U);
  EXPECT_NE(dialog.errors[0].find("none.iff"), std::string::npos);
  EXPECT_TRUE(support::NamesIn(directory.Path()).empty());
}

TEST(HealBadInput, OutputThatCannotBeWrittenIsFatal) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory.Path() / "in.iff", RunHeal(Cube(), 0.01).input);
  std::string input = (directory.Path() / "in.iff").string();
  for (const auto& place : {directory.Sub("folder"), directory.Path() / "none" / "out.iff"}) {
    HealDialog dialog;
    std::string output = place.string();
    IFHeal(&dialog).Run(0.01, input.data(), output.data());
    EXPECT_EQ(dialog.errors.size(), 1U) << place;
  }
  EXPECT_EQ(support::NamesIn(directory.Path()), (std::vector<std::string>{"folder", "in.iff"}));
}

TEST(HealBadInput, OutputOfAnImpossibleNameIsFatal) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory.Path() / "in.iff", RunHeal(Cube(), 0.01).input);
  std::string input = (directory.Path() / "in.iff").string();
  for (const std::string& name :
       {std::string(300, 'x'), std::string("in.iff/out.iff"), std::string()}) {
    HealDialog dialog;
    std::string output = (directory.Path() / name).string();
    EXPECT_NO_THROW(IFHeal(&dialog).Run(0.01, input.data(), output.data())) << name;
    EXPECT_EQ(dialog.errors.size(), 1U) << name;
  }
  EXPECT_EQ(support::NamesIn(directory.Path()), (std::vector<std::string>{"in.iff"}));
}

TEST(HealBadInput, OutputMayBeTheInput) {
  const support::TempDirectory directory;
  formats::Mesh mesh = Cube();
  mesh.facets.push_back(mesh.facets[0]);
  support::WriteWholeFile(directory.Path() / "in.iff", RunHeal(mesh, 0.01).input);
  HealDialog dialog;
  std::string path = (directory.Path() / "in.iff").string();
  IFHeal(&dialog).Run(0.01, path.data(), path.data());
  EXPECT_TRUE(dialog.errors.empty());
  EXPECT_TRUE(support::ReadWholeFile(path) == RunHeal(Cube(), 0.01).input);
}

TEST(HealBadInput, ClassWithoutCallbacksDoesItsWork) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory.Path() / "in.iff", RunHeal(Cube(), 0.01).input);
  std::string input = (directory.Path() / "in.iff").string();
  std::string output = (directory.Path() / "out.iff").string();
  IFHeal(nullptr).Run(0.01, input.data(), output.data());
  EXPECT_TRUE(support::ReadWholeFile(output) == support::ReadWholeFile(input));
}

}  // namespace
}  // namespace heal_test

// What healing leaves in the file that QZ_KERNEL_LOG names.

#include <gtest/gtest.h>

#include "HealRun.h"
#include "support/EnvironmentVariable.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

class HealLog : public testing::Test {
 protected:
  std::string Log() const { return support::ReadWholeFile(m_directory / "kernel.log"); }

 private:
  support::TempDirectory m_directory;
  support::EnvironmentVariable m_log{"QZ_KERNEL_LOG", m_directory / "kernel.log"};
};

formats::Mesh Cube() { return support::Box({0, 0, 0}, {1, 1, 1}, 1); }

TEST_F(HealLog, HoldsTheStagesOfASoundSurface) {
  RunHeal(Cube(), 0.01);
  EXPECT_EQ(Log(),
            "stage: Reading surface\n"
            "stage: Preparing surface\n"
            "stage: Scanning for crossing facets\n"
            "stage: Writing surface\n");
}

TEST_F(HealLog, HoldsAWarningAmongTheStages) {
  RunHeal(Reversed(Cube()), 0.01);
  EXPECT_EQ(Log(),
            "stage: Reading surface\n"
            "stage: Preparing surface\n"
            "stage: Initialising surface\n"
            "stage: Stitching surface\n"
            "stage: Generating facets in holes\n"
            "warning: 1 bodies faced inwards and have been turned\n"
            "stage: Scanning for crossing facets\n"
            "stage: Writing surface\n");
}

TEST_F(HealLog, EndsWithTheErrorOfARunThatFails) {
  RunHeal(Cube(), -1);
  EXPECT_EQ(Log(), "error: tolerance: not a number of 0 or more\n");
}

}  // namespace
}  // namespace heal_test

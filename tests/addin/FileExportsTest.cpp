// The exports that name their files and have no working directory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "addin/exports.h"
#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace {

using ::testing::ElementsAre;

// Spelled once more for the caller's side: the export must be callable through exactly this type.
using FilterOperation = void(char*, char*, unsigned short, unsigned char*, bool*);
using HealOperation = void(double, char*, char*, bool*);

class FileExportsTest : public support::JobTest {
 protected:
  void Filter() {
    FilterOperation* const operation = qztutlFilterStockByColor;
    unsigned char colours[] = {200, 9, 7};
    operation(input.data(), output.data(), 2, colours, &succeeded);
  }
  void Heal() {
    HealOperation* const operation = qztutl_heal;
    operation(0.25, input.data(), output.data(), &succeeded);
  }

  support::ScriptedKernel kernel;
  std::string input = std::string(WorkDir().GetString()) + "in.iff";
  std::string output = std::string(WorkDir().GetString()) + "out.iff";
  bool succeeded = true;
};

support::Surface ThreeColours() {
  return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{1, 2, 3}, 7}, {{2, 3, 1}, 9}, {{3, 1, 2}, 200}}};
}

TEST_F(FileExportsTest, FilterPassesItsArgumentsOnAndAnswersWithTheVerdict) {
  support::WriteWholeFile(InJob("in.iff"), support::BinarySurfaceBytes(ThreeColours()));
  succeeded = false;
  Filter();
  EXPECT_TRUE(succeeded);
  support::Surface kept = ThreeColours();
  kept.facets.erase(kept.facets.begin());
  EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), support::BinarySurfaceBytes(kept));
}

TEST_F(FileExportsTest, FilterThatFailsIsFalse) {
  Filter();
  EXPECT_FALSE(succeeded);
}

TEST_F(FileExportsTest, FilterIsFalseFromItsFirstEffectOn) {
  bool atTheFirstFile = true;
  host.faults.RunAt("m_fopen", 1, [&] { atTheFirstFile = succeeded; });
  Filter();
  EXPECT_FALSE(atTheFirstFile);
}

TEST_F(FileExportsTest, ExceptionThatPassesThroughTheFilterLeavesFalse) {
  host.faults.RunAt("m_fopen", 2, [] { throw std::runtime_error("not the kernel's own"); });
  EXPECT_THROW(Filter(), std::runtime_error);
  EXPECT_FALSE(succeeded);
}

TEST_F(FileExportsTest, HealPassesEverythingOnAndAnswersWithTheVerdict) {
  succeeded = false;
  Heal();
  EXPECT_TRUE(succeeded);
  EXPECT_EQ(kernel.healTolerance, 0.25);
  EXPECT_THAT(host.events.Events(), ElementsAre("IFHeal()", "heal.Run job\\in.iff job\\out.iff",
                                                "heal.Run ends", "~IFHeal()"));
}

TEST_F(FileExportsTest, HealThatFailsIsFalse) {
  kernel.At("heal.Run", support::ScriptedKernel::Fatal("no way on"));
  Heal();
  EXPECT_FALSE(succeeded);
}

TEST_F(FileExportsTest, ExceptionThatPassesThroughTheHealLeavesFalse) {
  kernel.At("heal.Run", support::ScriptedKernel::Foreign());
  EXPECT_THROW(Heal(), std::runtime_error);
  EXPECT_FALSE(succeeded);
}

}  // namespace

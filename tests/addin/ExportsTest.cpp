// The frame that the stock operations share.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "addin/exports.h"
#include "support/NothrowBlocks.h"
#include "support/SweepJobTest.h"

namespace {

using ::testing::IsEmpty;

class ExportsTest : public support::SweepJobTest {
 protected:
  void Sweep() { qztutlSweepMultipleToolpathsFromStock(WorkDir(), &progress, &succeeded); }

  bool succeeded = true;
};

TEST_F(ExportsTest, VerdictOfASuccessfulSweepIsTrue) {
  Sweep();
  EXPECT_TRUE(succeeded);
  EXPECT_EQ(support::ReadWholeFile(InJob("StockModelOutput.tmp")), ExpectedOutput());
}

TEST_F(ExportsTest, FlagIsFalseAtEveryMomentBeforeTheDriverReturns) {
  int looks = 0;
  const auto look = [&](UIDialog&) {
    ++looks;
    EXPECT_FALSE(succeeded);
  };
  for (const char* call : {"IFSweep()", "OpenStockChannel", "stock.AddVertex", "Run", "Run ends"}) {
    kernel.At(call, look);
  }
  Sweep();
  EXPECT_EQ(looks, 7);
  EXPECT_TRUE(succeeded);
}

TEST_F(ExportsTest, VerdictOfAFailedSweepIsFalse) {
  kernel.At("Run", support::ScriptedKernel::Fatal("no way on"));
  Sweep();
  EXPECT_FALSE(succeeded);
}

TEST_F(ExportsTest, CallbackObjectKnowsHostAndWorkingDirectory) {
  kernel.At("Run", [](UIDialog& callbacks) {
    support::ScriptedKernel::Progress("Sweeping", 10)(callbacks);
    support::ScriptedKernel::Warning("odd")(callbacks);
  });
  Sweep();
  EXPECT_EQ(progress.Questions(), 2);
  EXPECT_EQ(support::ReadTextFile(InJob("ErrorCapture.txt")), "\nWarning Message Received:\nodd\n");
}

TEST_F(ExportsTest, WithoutMemoryForTheCallbackObjectNothingElseHappens) {
  host.faults.FailCall("new", 1);
  Sweep();
  EXPECT_FALSE(succeeded);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(ExportsTest, EachCallBeginsAfresh) {
  kernel.AtCall(1, support::ScriptedKernel::Fatal("no way on"));
  Sweep();
  EXPECT_FALSE(succeeded);
  Sweep();
  EXPECT_TRUE(succeeded);
}

TEST_F(ExportsTest, ExceptionThatIsNotTheKernelsPassesWithTheFlagFalse) {
  kernel.At("Run", support::ScriptedKernel::Foreign());
  EXPECT_THROW(Sweep(), std::runtime_error);
  EXPECT_FALSE(succeeded);
}

TEST_F(ExportsTest, CallbackObjectIsFreedOnEveryWayOut) {
  // While the kernel is being made there are two blocks: the callback object and the kernel's own.
  std::size_t during = 0;
  const auto count = [&](UIDialog&) { during = support::LivingBlocks(); };
  kernel.At("IFSweep()", count);
  Sweep();
  EXPECT_TRUE(succeeded);
  EXPECT_EQ(during, 2u);
  EXPECT_EQ(support::LivingBlocks(), 0u);

  kernel.At("Run", support::ScriptedKernel::Fatal("no way on"));
  Sweep();
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(support::LivingBlocks(), 0u);

  kernel.At("Run", support::ScriptedKernel::Foreign());
  EXPECT_THROW(Sweep(), std::runtime_error);
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

}  // namespace

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialog.h"
#include "callbacks/UIExceptionKernel.h"
#include "stock/HealSurface.h"
#include "support/JobTest.h"
#include "support/NothrowBlocks.h"
#include "support/ScriptedKernel.h"

namespace {

using support::ScriptedKernel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HealSurfaceTest : public support::JobTest {
 protected:
  HealSurfaceTest() {
    ResetAbortState();
    CurrentProgress() = {};
  }

  void Heal() {
    std::string input = support::AddinSpelling(InJob("")) + "in.iff";
    std::string output = support::AddinSpelling(InJob("")) + "out.iff";
    HealSurface(0.01, input.data(), output.data(), &succeeded);
  }

  ScriptedKernel kernel;
  bool succeeded = true;
};

// A stage that reports ten steps of a hundred each way up.
void TenSteps(UIDialog& callbacks) {
  callbacks.CreateProgress("Stitching", 10);
  for (int count = 1; count <= 10; ++count) callbacks.SetProgress(count);
  callbacks.EndProgress();
}

TEST_F(HealSurfaceTest, KernelThatReturnsIsSuccessAndNothingElseIsAskedOfTheHost) {
  Heal();
  EXPECT_TRUE(succeeded);
  EXPECT_THAT(host.events.Events(), ElementsAre("IFHeal()", "heal.Run job\\in.iff job\\out.iff",
                                                "heal.Run ends", "~IFHeal()"));
}

TEST_F(HealSurfaceTest, SuccessDoesNotDependOnAnOutput) {
  Heal();
  EXPECT_FALSE(JobHas("out.iff"));
  EXPECT_TRUE(succeeded);
}

TEST_F(HealSurfaceTest, ToleranceReachesTheKernelAsItIs) {
  for (const double tolerance : {0.0, 1e-4, -3.0, 1e300}) {
    char name[] = "a";
    HealSurface(tolerance, name, name, &succeeded);
    EXPECT_EQ(kernel.healTolerance, tolerance);
  }
}

TEST_F(HealSurfaceTest, VerdictIsFalseUntilTheKernelHasReturnedAndTrueBeforeItIsFreed) {
  int looks = 0;
  const auto isFalse = [&](UIDialog&) {
    ++looks;
    EXPECT_FALSE(succeeded);
  };
  for (const char* call : {"IFHeal()", "heal.Run", "heal.Run ends"}) kernel.At(call, isFalse);
  bool atTheEnd = false;
  kernel.AtDestruction([&] { atTheEnd = succeeded; });
  Heal();
  EXPECT_EQ(looks, 3);
  EXPECT_TRUE(atTheEnd);
}

TEST_F(HealSurfaceTest, WithoutMemoryForTheKernelNothingIsRunAndThatIsSuccess) {
  host.faults.FailCall("new", 1);
  Heal();
  EXPECT_TRUE(succeeded);
  EXPECT_THAT(kernel.CallNames(), IsEmpty());
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(HealSurfaceTest, RunFlagsAreClearedBeforeTheKernelIsMadeEvenIfItCannotBe) {
  SetPostPhase();
  SetMemoryLimit();
  SetExceptionRaised();
  const auto expectCleared = [](UIDialog&) {
    const RunFlags& flags = CurrentRunFlags();
    EXPECT_FALSE(flags.abort || flags.postPhase || flags.memoryLimit || flags.exceptionRaised);
  };
  kernel.At("IFHeal()", expectCleared);
  Heal();
  EXPECT_EQ(kernel.Calls(), 3);

  SetExceptionRaised();
  host.faults.FailCall("new", 2);
  Heal();
  EXPECT_EQ(kernel.Calls(), 3);
  EXPECT_FALSE(CurrentRunFlags().exceptionRaised);
}

TEST_F(HealSurfaceTest, KernelReportsToTheStatusBar) {
  kernel.At("heal.Run", [](UIDialog& callbacks) {
    EXPECT_TRUE(callbacks.IsActive());
    callbacks.CreateWait("Reading");
    callbacks.EndWait();
    callbacks.CreateProgress("Stitching", 100);
    callbacks.SetProgress(1);
    callbacks.SetProgress(2);
    callbacks.EndProgress();
    callbacks.ErrorMessage("A hole is left.", false);
  });
  Heal();
  EXPECT_TRUE(succeeded);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("IFHeal()", "heal.Run job\\in.iff job\\out.iff", "clearprompt",
                          "cleartext", "status \"  1.0%\"", "KeyPress 27", "status \"  1.0%\"",
                          "status \"  2.0%\"", "heal.Run ends", "~IFHeal()"));
}

TEST_F(HealSurfaceTest, ProgressOfAnEarlierRunIsStillThereInTheNext) {
  kernel.At("heal.Run", [](UIDialog& callbacks) {
    callbacks.CreateProgress("Stitching", 100);
    callbacks.SetProgress(50);
  });
  Heal();
  host.events.Clear();
  kernel.At("heal.Run", [](UIDialog& callbacks) { callbacks.SetProgress(51); });
  Heal();
  EXPECT_THAT(host.events.Only({"status", "KeyPress"}), ElementsAre("status \" 51.0%\""));
}

TEST_F(HealSurfaceTest, FatalErrorIsFailureAndTheKernelIsFreed) {
  for (const char* call : {"heal.Run", "heal.Run ends"}) {
    ScriptedKernel::Script fatal = ScriptedKernel::Fatal("no way on");
    kernel.At(call, fatal);
    succeeded = true;
    Heal();
    EXPECT_FALSE(succeeded);
    EXPECT_EQ(kernel.LivingObjects(), 0);
    EXPECT_FALSE(CurrentRunFlags().abort);
    EXPECT_EQ(host.events.Events().back(), "~IFHeal()");
  }
}

TEST_F(HealSurfaceTest, FatalErrorWhileTheKernelIsMadeIsFailure) {
  kernel.At("IFHeal()", ScriptedKernel::Fatal("no licence"));
  Heal();
  EXPECT_FALSE(succeeded);
  EXPECT_THAT(host.events.Events(), ElementsAre("IFHeal()"));
}

TEST_F(HealSurfaceTest, WarningIsNoFailure) {
  kernel.At("heal.Run", ScriptedKernel::Warning("A hole is left."));
  Heal();
  EXPECT_TRUE(succeeded);
}

TEST_F(HealSurfaceTest, EscapeAtAnyPollIsFailureWithTheAbortFlagSetAndTheNextHealWorks) {
  kernel.At("heal.Run", TenSteps);
  Heal();
  ASSERT_TRUE(succeeded);
  const int polls = host.faults.Calls("KeyPress");
  ASSERT_EQ(polls, 10);
  for (int k = 1; k <= polls; ++k) {
    host.escapeFrom = host.faults.Calls("KeyPress") + k;
    Heal();
    EXPECT_FALSE(succeeded) << k;
    EXPECT_TRUE(CurrentRunFlags().abort) << k;
    EXPECT_EQ(host.events.Events().back(), "~IFHeal()") << k;
    EXPECT_EQ(kernel.LivingObjects(), 0) << k;
    host.escapeFrom = 0;
    Heal();
    EXPECT_TRUE(succeeded) << k;
    EXPECT_FALSE(CurrentRunFlags().abort) << k;
  }
}

TEST_F(HealSurfaceTest, KernelThatGoesOnBehindTheStopIsNotStoppedAgain) {
  // Some of its frames may catch what they do not know and go on.
  kernel.At("heal.Run", [](UIDialog& callbacks) {
    try {
      callbacks.ErrorMessage("no way on", true);
    } catch (...) {
    }
    TenSteps(callbacks);
    callbacks.ErrorMessage("no way on", true);
  });
  host.escapePressed = true;
  Heal();
  EXPECT_TRUE(succeeded) << "nothing has reached the driver";
}

TEST_F(HealSurfaceTest, OtherExceptionsPassWithTheKernelFreedAndTheVerdictFalse) {
  kernel.At("heal.Run", ScriptedKernel::Foreign());
  EXPECT_THROW(Heal(), std::runtime_error);
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_EQ(support::LivingBlocks(), 0u);

  succeeded = true;
  kernel.At("heal.Run", [](UIDialog&) { throw UIExceptionKernel(); });
  EXPECT_THROW(Heal(), UIExceptionKernel);
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(kernel.LivingObjects(), 0);

  succeeded = true;
  kernel.At("IFHeal()", ScriptedKernel::Foreign());
  EXPECT_THROW(Heal(), std::runtime_error);
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

TEST_F(HealSurfaceTest, FilesAndDirectoryAreTheKernelsAffair) {
  support::WriteWholeFile(InJob("out.iff"), "what an earlier heal left");
  kernel.At("heal.Run", ScriptedKernel::Fatal("no way on"));
  Heal();
  EXPECT_EQ(support::ReadWholeFile(InJob("out.iff")), "what an earlier heal left");
  EXPECT_TRUE(IsAtHome());
}

}  // namespace

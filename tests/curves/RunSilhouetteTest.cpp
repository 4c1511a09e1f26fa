// The silhouette's kernel run, without the shift.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "OutlineJob.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialog.h"
#include "callbacks/UIExceptionKernel.h"
#include "callbacks/UIExceptionQZC.h"
#include "support/NothrowBlocks.h"

namespace {

using support::ScriptedKernel;
using ::testing::ElementsAre;

class RunSilhouetteTest : public OutlineJob {
 protected:
  unsigned char Run() { return OutlineJob::Run(Operation::kSilhouette); }

  /// The kernel writes half a file and then does `then`.
  void WriteHalfAnd(const ScriptedKernel::Script& then) {
    kernel.At("silhouette.Run", [this, then](UIDialog& callbacks) {
      support::WriteWholeFile(InJob("out.tmp"), "half");
      then(callbacks);
    });
  }
};

TEST_F(RunSilhouetteTest, RunsTheKernelInTheHostsTemporaryDirectory) {
  bool wasThere = false;
  kernel.At("silhouette.Run ends", [&](UIDialog&) { wasThere = IsInJob(); });
  EXPECT_EQ(Run(), 1);
  EXPECT_TRUE(wasThere);
  EXPECT_TRUE(IsAtHome());
  EXPECT_THAT(host.events.Events(),
              ElementsAre("GetTempDirectory", "getcwd 256", "chdir job\\", "IFSilhouette()",
                          "silhouette.Run job\\in.iff job\\out.tmp", "silhouette.Run ends",
                          "chdir home", "~IFSilhouette()"));
  EXPECT_EQ(OutputBytes(), Answer(Operation::kSilhouette));
}

TEST_F(RunSilhouetteTest, NamesAndDistanceReachTheKernelAsTheyAre) {
  input = "a relative name";
  output = "..\\another";
  distance = -1e300;
  EXPECT_EQ(Run(), 1);
  EXPECT_THAT(host.events.Only({"silhouette.Run a"}),
              ElementsAre("silhouette.Run a relative name ..\\another"));
  EXPECT_EQ(kernel.distance, -1e300);
}

TEST_F(RunSilhouetteTest, SuccessDoesNotDependOnAnOutput) {
  kernel.At("silhouette.Run", [](UIDialog&) {});
  EXPECT_EQ(Run(), 1);
  EXPECT_FALSE(JobHas("out.tmp"));
}

TEST_F(RunSilhouetteTest, WithoutMemoryForTheKernelNothingIsRunAndThatIsOne) {
  SetExceptionRaised();
  support::WriteWholeFile(InJob("out.tmp"), "old");
  host.faults.FailCall("new", 1);
  EXPECT_EQ(Run(), 1);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("GetTempDirectory", "getcwd 256", "chdir job\\", "chdir home"));
  EXPECT_EQ(OutputBytes(), "old");
  EXPECT_FALSE(CurrentRunFlags().exceptionRaised) << "the flags are cleared all the same";
}

TEST_F(RunSilhouetteTest, RunFlagsAreClearedBeforeTheKernelIsMade) {
  host.escapePressed = true;
  PollEscape();
  host.escapePressed = false;
  SetPostPhase();
  SetMemoryLimit();
  SetExceptionRaised();
  bool looked = false;
  kernel.At("IFSilhouette()", [&](UIDialog&) {
    const RunFlags& flags = CurrentRunFlags();
    EXPECT_FALSE(flags.abort || flags.postPhase || flags.memoryLimit || flags.exceptionRaised);
    looked = true;
  });
  Run();
  EXPECT_TRUE(looked);
}

TEST_F(RunSilhouetteTest, UsersStopIsZeroAndKeepsTheOutput) {
  host.escapePressed = true;
  WriteHalfAnd(ScriptedKernel::Progress("Scanning", 10));
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(OutputBytes(), "half");
  EXPECT_TRUE(IsAtHome());
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_THAT(host.events.Only({"exists", "remove", "chdir", "~"}),
              ElementsAre("chdir job\\", "chdir home", "~IFSilhouette()"));
}

TEST_F(RunSilhouetteTest, KernelErrorIsOneAndRemovesTheOutputWhileTheDirectoryIsTheTemporaryOne) {
  output = "out.tmp";
  host.existsAnswers["out.tmp"] = true;
  WriteHalfAnd(ScriptedKernel::Fatal("no way on"));
  EXPECT_EQ(Run(), 1);
  EXPECT_FALSE(JobHas("out.tmp"));
  EXPECT_THAT(host.events.Events(),
              ElementsAre("GetTempDirectory", "getcwd 256", "chdir job\\", "IFSilhouette()",
                          "silhouette.Run job\\in.iff out.tmp", "exists out.tmp", "remove out.tmp",
                          "chdir home", "~IFSilhouette()"));
}

TEST_F(RunSilhouetteTest, KernelErrorWithoutAnOutputRemovesNothing) {
  kernel.At("silhouette.Run", ScriptedKernel::Fatal("no way on"));
  EXPECT_EQ(Run(), 1);
  EXPECT_THAT(host.events.Only({"exists", "remove"}), ElementsAre("exists job\\out.tmp"));
}

TEST_F(RunSilhouetteTest, KernelErrorBehindAnUnheededEscapeCountsAsTheUsersStop) {
  // The kernel swallows the first exception; then its error throws no second one.
  WriteHalfAnd([this](UIDialog& callbacks) {
    host.escapePressed = true;
    try {
      ScriptedKernel::Progress("Scanning", 10)(callbacks);
    } catch (...) {
    }
    throw UIExceptionQZC();
  });
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(OutputBytes(), "half");
}

TEST_F(RunSilhouetteTest, WarningIsNoFailure) {
  kernel.At("silhouette.Run ends", ScriptedKernel::Warning("Facets were dropped."));
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(OutputBytes(), Answer(Operation::kSilhouette));
}

TEST_F(RunSilhouetteTest, DialogShowsProgressInTheStatusBar) {
  kernel.At("silhouette.Run", [](UIDialog& callbacks) {
    EXPECT_TRUE(callbacks.IsActive());
    callbacks.CreateProgress("Scanning", 4);
    callbacks.SetProgress(1);
  });
  Run();
  EXPECT_THAT(host.events.Only({"status", "KeyPress"}),
              ElementsAre("status \" 25.0%\"", "KeyPress 27", "status \" 25.0%\""));
}

TEST_F(RunSilhouetteTest, OtherExceptionsPassWithDirectoryAndKernelPutBackAndTheOutputKept) {
  for (const char* call : {"IFSilhouette()", "silhouette.Run", "silhouette.Run ends"}) {
    SCOPED_TRACE(call);
    support::WriteWholeFile(InJob("out.tmp"), "half");
    kernel.At("silhouette.Run", [](UIDialog&) {});
    kernel.At(call, ScriptedKernel::Foreign());
    EXPECT_THROW(Run(), std::runtime_error);
    kernel.At(call, [](UIDialog&) { throw UIExceptionKernel(); });
    EXPECT_THROW(Run(), UIExceptionKernel);
    kernel.At(call, [](UIDialog&) {});
    EXPECT_EQ(OutputBytes(), "half");
    EXPECT_TRUE(IsAtHome());
    EXPECT_EQ(kernel.LivingObjects(), 0);
    EXPECT_EQ(support::LivingBlocks(), 0u);
  }
}

TEST_F(RunSilhouetteTest, ExceptionOfTheDialogWhileTheKernelIsMadePassesToo) {
  kernel.At("IFSilhouette()", [](UIDialog&) { throw UIExceptionQZC(); });
  EXPECT_THROW(Run(), UIExceptionQZC);
  EXPECT_TRUE(IsAtHome());
}

TEST_F(RunSilhouetteTest, DirectoryThatCannotBeEnteredIsNoFailure) {
  host.faults.FailCall("SetCurrentDirectoryA", 1);
  EXPECT_EQ(Run(), 1);
  EXPECT_TRUE(IsAtHome());
  EXPECT_EQ(OutputBytes(), Answer(Operation::kSilhouette));
}

}  // namespace

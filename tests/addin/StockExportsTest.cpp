// The other two exports that share the sweep's frame: what reaches their drivers and comes back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "addin/exports.h"
#include "support/CompareJobTest.h"
#include "support/CompressJobTest.h"
#include "support/NothrowBlocks.h"

namespace {

using ::testing::IsEmpty;

// Spelled once more for the caller's side: the export must be callable through exactly this type.
using CompareOperation = void(CString, HostProgress*, bool*);
using CompressOperation = void(CString, CString, CString, HostProgress*, double, bool*);

void ReportAndWarn(UIDialog& callbacks) {
  support::ScriptedKernel::Progress("Sweeping", 10)(callbacks);
  support::ScriptedKernel::Warning("odd")(callbacks);
}

class CompareExportTest : public support::CompareJobTest {
 protected:
  void Compare() {
    CompareOperation* const operation = qztutlSweepPartStockCompare;
    operation(WorkDir(), &progress, &succeeded);
  }

  bool succeeded = true;
};

TEST_F(CompareExportTest, VerdictOfASuccessIsTrueAndTheResultIsThere) {
  succeeded = false;
  Compare();
  EXPECT_TRUE(succeeded);
  EXPECT_EQ(support::FilesIn(InJob("")), JobFilesWith(ResultBytes()));
}

TEST_F(CompareExportTest, VerdictOfAFailureIsFalse) {
  WriteBands({7, 0, {}, {}});
  Compare();
  EXPECT_FALSE(succeeded);
}

TEST_F(CompareExportTest, FlagIsFalseFromTheFirstEffectToTheLast) {
  int looks = 0;
  const auto look = [&] {
    ++looks;
    EXPECT_FALSE(succeeded);
  };
  host.faults.RunAt("new", 1, look);
  host.faults.RunAt("CopyFileA", 3, look);
  kernel.At("Compare", [&](UIDialog&) { look(); });
  Compare();
  EXPECT_EQ(looks, 3);
  EXPECT_TRUE(succeeded);
}

TEST_F(CompareExportTest, CallbackObjectKnowsHostAndWorkingDirectory) {
  kernel.At("Compare", ReportAndWarn);
  Compare();
  EXPECT_EQ(progress.Questions(), 2);
  EXPECT_EQ(support::ReadTextFile(InJob("ErrorCapture.txt")), "\nWarning Message Received:\nodd\n");
}

TEST_F(CompareExportTest, WithoutMemoryForTheCallbackObjectNothingElseHappens) {
  host.faults.FailCall("new", 1);
  Compare();
  EXPECT_FALSE(succeeded);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(CompareExportTest, ExceptionThatIsNotTheKernelsPassesWithTheFlagFalseAndNothingLost) {
  kernel.At("Compare", support::ScriptedKernel::Foreign());
  EXPECT_THROW(Compare(), std::runtime_error);
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

class CompressExportTest : public support::CompressJobTest {
 protected:
  void Compress() {
    CompressOperation* const operation = qztutlStockModelCompress;
    operation(WorkDir(), "in.iff", OutputName(), &progress, kTolerance, &succeeded);
  }

  bool succeeded = true;
};

TEST_F(CompressExportTest, ArgumentsArriveAndTheVerdictOfASuccessIsTrue) {
  succeeded = false;
  Compress();
  EXPECT_TRUE(succeeded);
  EXPECT_EQ(FilesInJob(), InputPathAnd(ResultBytes()));
}

TEST_F(CompressExportTest, VerdictOfAFailureIsFalse) {
  kernel.At("Run", support::ScriptedKernel::Fatal("no way on"));
  Compress();
  EXPECT_FALSE(succeeded);
}

TEST_F(CompressExportTest, FlagIsFalseFromTheFirstEffectToTheLast) {
  int looks = 0;
  const auto look = [&] {
    ++looks;
    EXPECT_FALSE(succeeded);
  };
  host.faults.RunAt("new", 1, look);
  host.faults.RunAt("file_exists", 2, look);
  kernel.At("Run", [&](UIDialog&) { look(); });
  Compress();
  EXPECT_EQ(looks, 3);
  EXPECT_TRUE(succeeded);
}

TEST_F(CompressExportTest, CallbackObjectKnowsHostAndWorkingDirectory) {
  kernel.At("Run", ReportAndWarn);
  Compress();
  EXPECT_EQ(progress.Questions(), 2);
  EXPECT_EQ(support::ReadTextFile(InJob("ErrorCapture.txt")), "\nWarning Message Received:\nodd\n");
}

TEST_F(CompressExportTest, WithoutMemoryForTheCallbackObjectNothingElseHappens) {
  host.faults.FailCall("new", 1);
  Compress();
  EXPECT_FALSE(succeeded);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(CompressExportTest, ExceptionThatIsNotTheKernelsPassesWithTheFlagFalseAndNothingLost) {
  kernel.At("Run", support::ScriptedKernel::Foreign());
  EXPECT_THROW(Compress(), std::runtime_error);
  EXPECT_FALSE(succeeded);
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

}  // namespace

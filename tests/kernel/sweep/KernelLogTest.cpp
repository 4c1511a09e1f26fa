// What the kernel leaves in the file that QZ_KERNEL_LOG names.

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>

#include "SweepRun.h"
#include "kernel/common/Reporter.h"
#include "support/EnvironmentVariable.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LogTo : public support::EnvironmentVariable {
 public:
  explicit LogTo(const std::optional<std::string>& path)
      : EnvironmentVariable("QZ_KERNEL_LOG", path) {}
};

class KernelLog : public testing::Test {
 protected:
  std::string Log() const { return support::ReadWholeFile(File()); }
  std::string File() const { return directory / "kernel.log"; }

  support::TempDirectory directory;
  RecordingDialog dialog;
};

formats::Mesh Block() { return support::Box({0, 0, 0}, {12, 10, 6}, 1); }

formats::Mesh TurnedInwards(formats::Mesh mesh) {
  for (formats::Facet& facet : mesh.facets) std::swap(facet.vertices[0], facet.vertices[1]);
  return mesh;
}

std::vector<formats::PathRecord> Job() {
  return {PathOf(Ball(2), 0.05, {{-3, 5, 4}, {15, 5.5, 4.5}})};
}

TEST_F(KernelLog, TakesStagesAndMessagesInTheirOrder) {
  const LogTo log(File());
  kernel::Reporter reporter(&dialog);
  reporter.BeginStage("Reading", 0, 40);
  reporter.Advance(1, 2);
  reporter.Warn("an odd facet");
  reporter.EndStage();
  reporter.BeginStage("Sweeping", 40, 100);
  reporter.Fail("no way on");
  EXPECT_EQ(Log(), "stage: Reading\nwarning: an odd facet\nstage: Sweeping\nerror: no way on\n");
}

TEST_F(KernelLog, TakesAMessageBeforeTheCallbackThatEndsTheRun) {
  const LogTo log(File());
  dialog.throwAt = 1;
  EXPECT_THROW(kernel::Reporter(&dialog).Fail("no way on"), RecordingDialog::Stop);
  EXPECT_EQ(Log(), "error: no way on\n");
}

TEST_F(KernelLog, HearsOfARunWithoutACallbackObject) {
  const LogTo log(File());
  kernel::Reporter(nullptr).Warn("an odd facet");
  EXPECT_EQ(Log(), "warning: an odd facet\n");
}

TEST_F(KernelLog, FileThatIsThereIsKeptAndAppendedTo) {
  support::WriteWholeFile(File(), "of last week\n");
  const LogTo log(File());
  kernel::Reporter(&dialog).Warn("first");
  kernel::Reporter(&dialog).Warn("second");
  EXPECT_EQ(Log(), "of last week\nwarning: first\nwarning: second\n");
}

TEST_F(KernelLog, FollowsTheVariableFromLineToLine) {
  kernel::Reporter reporter(&dialog);
  {
    const LogTo log(File());
    reporter.Warn("written");
  }
  const LogTo other(directory / "other.log");
  reporter.Warn("written elsewhere");
  EXPECT_EQ(Log(), "warning: written\n");
  EXPECT_EQ(support::ReadWholeFile(directory / "other.log"), "warning: written elsewhere\n");
}

TEST_F(KernelLog, WithoutTheVariableNothingIsWrittenAndTheCallbacksHearAll) {
  const LogTo none(std::nullopt);
  // A file of any default name would come to be here.
  const std::filesystem::path home = std::filesystem::current_path();
  std::filesystem::current_path(directory.Path());
  kernel::Reporter reporter(&dialog);
  reporter.BeginStage("Sweeping", 0, 100);
  reporter.Warn("an odd facet");
  std::filesystem::current_path(home);
  EXPECT_THAT(dialog.calls, ElementsAre("progress Sweeping", "warning an odd facet"));
  EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
}

TEST_F(KernelLog, FileThatCannotBeWrittenHarmsNothing) {
  for (const std::string& path : {directory.Path().string(), directory / "missing/kernel.log"}) {
    const LogTo log(path);
    const SweepResult run = RunSweep(TurnedInwards(Block()), Job());
    ExpectSound(run.mesh);
    EXPECT_EQ(run.closes, 1);
    EXPECT_THAT(run.dialog.warnings, testing::SizeIs(1));
    EXPECT_THAT(run.dialog.errors, IsEmpty());
    EXPECT_THAT(support::NamesIn(directory.Path()), IsEmpty());
  }
}

TEST_F(KernelLog, SweepLeavesItsStagesAndItsWarningAmongThem) {
  const LogTo log(File());
  RunSweep(TurnedInwards(Block()), Job());
  EXPECT_EQ(Log(),
            "stage: Reading toolpaths\n"
            "stage: Preparing stock\n"
            "warning: the stock's facets faced inwards and have been turned\n"
            "stage: Initialising stock\n"
            "stage: Sweeping\n"
            "stage: Generating surface\n"
            "stage: Optimising surface\n"
            "stage: Cleaning surface\n"
            "stage: Writing result\n");
}

TEST_F(KernelLog, SweepThatFailsSaysWhyInItsLastLine) {
  const LogTo log(File());
  const SweepResult run = RunSweep(Block(), Job(), 0, 0);
  ASSERT_THAT(run.dialog.errors, ElementsAre("Memory limit reached."));
  EXPECT_TRUE(Log().ends_with("stage: Writing result\nerror: Memory limit reached.\n")) << Log();
}

}  // namespace
}  // namespace sweep_test

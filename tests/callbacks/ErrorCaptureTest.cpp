// The record that UIDlgKernel keeps of kernel errors and warnings, and its copy.

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "callbacks/UIDlgKernel.h"
#include "callbacks/UIExceptionKernel.h"
#include "support/JobTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFile = "ErrorCapture.txt";
constexpr const char* kCopy = "Job1_TmpSaveErrorCapture.txt";

class ErrorCaptureTest : public support::JobTest {
 protected:
  ErrorCaptureTest() {
    callbacks.SetHost(&progress);
    callbacks.SetWorkDir(WorkDir());
  }

  std::string Captured() const { return support::ReadTextFile(InJob(kFile)); }

  UIDlgKernel callbacks;
  UIDialog& dialog = callbacks;
};

TEST_F(ErrorCaptureTest, WarningIsRecordedAndTheKernelGoesOn) {
  EXPECT_NO_THROW(dialog.ErrorMessage("odd facet", false));
  EXPECT_EQ(Captured(), "\nWarning Message Received:\nodd facet\n");
}

TEST_F(ErrorCaptureTest, FatalErrorIsRecordedBeforeItIsThrown) {
  EXPECT_THROW(dialog.ErrorMessage("no way on", true), UIExceptionKernel);
  EXPECT_EQ(Captured(), "\nError Message Received:\nno way on\n");
}

TEST_F(ErrorCaptureTest, LinesEndAsTheSystemsTextFilesDo) {
  dialog.ErrorMessage("odd", false);
  const auto example = InKeep("example.txt");
  std::ofstream(example) << "\nWarning Message Received:\nodd\n";
  EXPECT_EQ(support::ReadWholeFile(InJob(kFile)), support::ReadWholeFile(example));
}

TEST_F(ErrorCaptureTest, EntriesOfOneRunFollowOneAnotherAndOnlyOneExceptionIsThrown) {
  dialog.ErrorMessage("one", false);
  dialog.ErrorMessage("two", false);
  EXPECT_THROW(dialog.ErrorMessage("three", true), UIExceptionKernel);
  EXPECT_NO_THROW(dialog.ErrorMessage("four", true));
  EXPECT_EQ(Captured(),
            "\nWarning Message Received:\none\n\nWarning Message Received:\ntwo\n"
            "\nError Message Received:\nthree\n\nError Message Received:\nfour\n");
}

TEST_F(ErrorCaptureTest, EntriesOfEarlierJobsStayAtTheHead) {
  support::WriteWholeFile(InJob(kFile), "what an earlier job left");
  dialog.ErrorMessage("new", false);
  EXPECT_EQ(Captured(), "what an earlier job left\nWarning Message Received:\nnew\n");
}

TEST_F(ErrorCaptureTest, NullMessageIsRecordedUnderTheOperationsName) {
  dialog.ErrorMessage(nullptr, false);
  EXPECT_EQ(Captured(), "\nWarning Message Received:\nKernvale ErrorMessage message is null\n");
}

TEST_F(ErrorCaptureTest, PercentSignsOfAMessageAreText) {
  dialog.ErrorMessage("100%s %n", false);
  EXPECT_EQ(Captured(), "\nWarning Message Received:\n100%s %n\n");
}

TEST_F(ErrorCaptureTest, EmptyMessageLeavesNoEntryButAFatalOneStillThrows) {
  dialog.ErrorMessage("", false);
  EXPECT_THROW(dialog.ErrorMessage("", true), UIExceptionKernel);
  EXPECT_THAT(host.events.Events(), IsEmpty());
  EXPECT_FALSE(JobHas(kFile));
}

TEST_F(ErrorCaptureTest, WithoutAWorkingDirectoryNothingIsTouched) {
  callbacks.SetWorkDir("");
  dialog.ErrorMessage("odd", false);
  EXPECT_THROW(dialog.ErrorMessage("worse", true), UIExceptionKernel);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(ErrorCaptureTest, FirstEntryCreatesTheFileAndThenCopiesIt) {
  dialog.ErrorMessage("odd", false);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("fopen job\\ErrorCapture.txt r fails", "fopen job\\ErrorCapture.txt w",
                          "fclose job\\ErrorCapture.txt", "get_REG_KEY",
                          "RegOpen Software\\TestHost\\Configurations\\Variables\\Toolpaths 131097",
                          "GetStringValue Enable Stock Model Data Directory 260 fails", "RegClose",
                          "remove job\\Job1_TmpSaveErrorCapture.txt fails",
                          "copy job\\ErrorCapture.txt -> job\\Job1_TmpSaveErrorCapture.txt"));
}

TEST_F(ErrorCaptureTest, LaterEntryReopensTheFileAndReplacesTheCopy) {
  dialog.ErrorMessage("one", false);
  host.events.Clear();
  dialog.ErrorMessage("two", false);
  EXPECT_THAT(host.events.Only({"fopen", "fclose", "remove", "copy"}),
              ElementsAre("fopen job\\ErrorCapture.txt r", "fclose job\\ErrorCapture.txt",
                          "fopen job\\ErrorCapture.txt r+", "fclose job\\ErrorCapture.txt",
                          "remove job\\Job1_TmpSaveErrorCapture.txt",
                          "copy job\\ErrorCapture.txt -> job\\Job1_TmpSaveErrorCapture.txt"));
}

TEST_F(ErrorCaptureTest, CopyHoldsTheWholeRecordAfterEachEntry) {
  KeepCopiesApart();
  dialog.ErrorMessage("one", false);
  EXPECT_EQ(support::ReadWholeFile(InKeep(kCopy)), support::ReadWholeFile(InJob(kFile)));
  dialog.ErrorMessage("two", false);
  EXPECT_EQ(support::ReadWholeFile(InKeep(kCopy)), support::ReadWholeFile(InJob(kFile)));
  EXPECT_FALSE(JobHas(kCopy));
}

TEST_F(ErrorCaptureTest, FileThatCannotBeOpenedIsGivenUpSilently) {
  support::WriteWholeFile(InKeep(kCopy), "old copy");
  KeepCopiesApart();
  host.faults.FailFrom("fopen", 1);
  dialog.ErrorMessage("odd", false);
  EXPECT_THROW(dialog.ErrorMessage("worse", true), UIExceptionKernel);
  EXPECT_THAT(host.events.Only({"remove", "copy", "RegOpen"}), IsEmpty());
  EXPECT_EQ(support::ReadWholeFile(InKeep(kCopy)), "old copy");
  EXPECT_FALSE(JobHas(kFile));
}

TEST_F(ErrorCaptureTest, FileThatCannotBeReopenedKeepsWhatItHolds) {
  support::WriteWholeFile(InJob(kFile), "earlier");
  host.faults.FailCall("fopen", 2);
  dialog.ErrorMessage("odd", false);
  EXPECT_EQ(Captured(), "earlier");
  EXPECT_THAT(host.events.Only({"remove", "copy"}), IsEmpty());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(ErrorCaptureTest, EntryThatCannotGoToTheEndDoesNotGoOverEarlierOnes) {
  dialog.ErrorMessage("first", false);
  const std::string first = Captured();
  host.faults.FailCall("fseek", host.faults.Calls("fseek") + 1);
  dialog.ErrorMessage("second, and longer", false);
  EXPECT_EQ(Captured(), first);
  EXPECT_TRUE(host.OpenStreams().empty());
}

TEST_F(ErrorCaptureTest, OldCopyGoesEvenWhenTheNewOneCannotBeMade) {
  support::WriteWholeFile(InJob(kCopy), "old copy");
  host.faults.FailCall("CopyFileA", 1);
  EXPECT_NO_THROW(dialog.ErrorMessage("odd", false));
  EXPECT_FALSE(JobHas(kCopy));
}

TEST_F(ErrorCaptureTest, CancelLeavesNoEntry) {
  progress.cancelFrom = 1;
  EXPECT_THROW(dialog.CreateWait("Sweeping"), UIExceptionKernel);
  EXPECT_FALSE(JobHas(kFile));
}

}  // namespace

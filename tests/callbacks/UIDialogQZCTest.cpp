#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialogQZC.h"
#include "callbacks/UIExceptionQZC.h"
#include "support/FilledStatusMessages.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// No data of its own, and UIDialog alone as its base.
static_assert(sizeof(UIDialogQZC) == sizeof(void*));
static_assert(std::is_base_of_v<UIDialog, UIDialogQZC>);
static_assert(sizeof(ProgressState::text) == 280);

std::string Status(const std::string& text) { return "status \"" + text + "\""; }

class UIDialogQZCTest : public ::testing::Test {
 protected:
  UIDialogQZCTest() {
    ResetAbortState();
    CurrentProgress() = {};
  }

  // What one step makes the host see.
  std::vector<std::string> Step(int count) {
    host.events.Clear();
    dialog.SetProgress(count);
    return host.events.Events();
  }

  support::TestHost host;
  UIDialogQZC object;
  // The kernel knows no more than the interface.
  UIDialog& dialog = object;
};

TEST_F(UIDialogQZCTest, IsActive) { EXPECT_TRUE(dialog.IsActive()); }

// --- Waits ---

TEST_F(UIDialogQZCTest, WaitsClearPromptAndTextAndShowNothingWithAnEmptyTable) {
  for (const char* text : {"Stitching", "Offsetting (phase 2)... 17", "Reading", ""}) {
    host.events.Clear();
    dialog.CreateWait(text);
    dialog.UpdateWait(text);
    EXPECT_THAT(host.events.Events(),
                ElementsAre("clearprompt", "cleartext", "clearprompt", "cleartext"))
        << text;
  }
}

TEST_F(UIDialogQZCTest, WaitsShowTheirNumbersMessage) {
  const support::FilledStatusMessages texts;
  dialog.CreateWait("Stitching");
  dialog.UpdateWait("Initialising");
  dialog.CreateWait("Reading");
  EXPECT_THAT(host.events.Events(),
              ElementsAre("clearprompt", "cleartext", Status("<22>"), "clearprompt", "cleartext",
                          Status("<23>"), "clearprompt", "cleartext", Status("<21>")));
}

TEST_F(UIDialogQZCTest, OffsettingWaitsShowTheirCounter) {
  const support::FilledStatusMessages texts;
  dialog.CreateWait("Offsetting (phase 2)... 17");
  dialog.UpdateWait("Offsetting (phase 3)... 18");
  dialog.UpdateWait("Offsetting");
  EXPECT_THAT(host.events.Only({"status"}),
              ElementsAre(Status("<24>17"), Status("<24>18"), Status("<24>-1")));
}

TEST_F(UIDialogQZCTest, WaitsLeaveTheProgressRunAlone) {
  dialog.CreateProgress("Writing", 200);
  dialog.CreateWait("Stitching");
  dialog.UpdateWait("Offsetting");
  dialog.EndWait();
  EXPECT_STREQ(CurrentProgress().text, "Writing");
  EXPECT_EQ(CurrentProgress().messageNumber, 3);
  EXPECT_EQ(CurrentProgress().total, 200);
}

TEST_F(UIDialogQZCTest, NeitherEndOfAWaitNorBeginAndEndOfARunReachTheHost) {
  dialog.EndWait();
  dialog.CreateProgress("Writing", 200);
  dialog.UpdateProgress("Scanning");
  dialog.EndProgress();
  dialog.ResetWait("Writing", 200);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

// --- Progress runs ---

TEST_F(UIDialogQZCTest, FirstStepIsShownPolledAndShownAgain) {
  dialog.CreateProgress("Writing", 200);
  EXPECT_THAT(Step(20), ElementsAre(Status(" 10.0%"), "KeyPress 27", Status(" 10.0%")));
}

TEST_F(UIDialogQZCTest, StepsUpToThreePointsAreShownOnceAndAddUpToTheNextPoll) {
  dialog.CreateProgress("Writing", 100);
  EXPECT_THAT(Step(10), ElementsAre(Status(" 10.0%"), "KeyPress 27", Status(" 10.0%")));
  EXPECT_THAT(Step(12), ElementsAre(Status(" 12.0%")));
  EXPECT_THAT(Step(14), ElementsAre(Status(" 14.0%"), "KeyPress 27", Status(" 14.0%")));
  EXPECT_THAT(Step(16), ElementsAre(Status(" 16.0%")));
}

TEST_F(UIDialogQZCTest, ARiseOfExactlyThreePointsDoesNotPoll) {
  dialog.CreateProgress("Writing", 16);
  Step(4);
  CurrentProgress().lastPercentage = 22.0;  // 25 - 22 is 3 exactly
  EXPECT_THAT(Step(4), ElementsAre(Status(" 25.0%")));
  CurrentProgress().lastPercentage = 21.9375;
  EXPECT_THAT(Step(4), ElementsAre(Status(" 25.0%"), "KeyPress 27", Status(" 25.0%")));
}

TEST_F(UIDialogQZCTest, AnEqualStepDoesNotPoll) {
  dialog.CreateProgress("Writing", 100);
  Step(10);
  EXPECT_THAT(Step(10), ElementsAre(Status(" 10.0%")));
}

TEST_F(UIDialogQZCTest, AFallPollsHoweverSmall) {
  dialog.CreateProgress("Writing", 1000);
  Step(500);
  EXPECT_THAT(Step(200), ElementsAre(Status(" 20.0%"), "KeyPress 27", Status(" 20.0%")));
  EXPECT_THAT(Step(199), ElementsAre(Status(" 19.9%"), "KeyPress 27", Status(" 19.9%")));
}

TEST_F(UIDialogQZCTest, PercentageIs100WhereThereIsNothingToDivide) {
  struct Case {
    int total;
    int count;
  };
  for (const Case& c : {Case{0, 5}, Case{0, 0}, Case{-1, 5}, Case{100, 0}, Case{100, -7},
                        Case{100, 100}, Case{100, 101}}) {
    dialog.CreateProgress("Writing", c.total);
    EXPECT_THAT(Step(c.count), ElementsAre(Status("100.0%"), "KeyPress 27", Status("100.0%")))
        << c.total << ' ' << c.count;
  }
}

TEST_F(UIDialogQZCTest, PercentageIsComputedInDoubles) {
  dialog.CreateProgress("Writing", 3);
  EXPECT_EQ(Step(1).front(), Status(" 33.3%"));
  EXPECT_EQ(Step(2).front(), Status(" 66.7%"));
}

TEST_F(UIDialogQZCTest, LargeRunsShowZeroBetweenTheThousandsWithoutPolling) {
  dialog.CreateProgress("Writing", 200000);
  EXPECT_THAT(Step(1500), ElementsAre(Status("  0.0%")));
  EXPECT_THAT(Step(2000), ElementsAre(Status("  1.0%"), "KeyPress 27", Status("  1.0%")));
  EXPECT_THAT(Step(2001), ElementsAre(Status("  0.0%")));
  EXPECT_THAT(Step(3000), ElementsAre(Status("  1.5%")));
  EXPECT_THAT(Step(199999), ElementsAre(Status("  0.0%")));
  EXPECT_THAT(Step(200000), ElementsAre(Status("100.0%"), "KeyPress 27", Status("100.0%")));
  EXPECT_THAT(Step(200001), ElementsAre(Status("  0.0%")));
}

TEST_F(UIDialogQZCTest, TheZeroBetweenTheThousandsIsNoFall) {
  dialog.CreateProgress("Writing", 200000);
  Step(100000);
  Step(100500);
  EXPECT_DOUBLE_EQ(CurrentProgress().lastPercentage, 50.0);
  EXPECT_THAT(Step(101000), ElementsAre(Status(" 50.5%")));
}

TEST_F(UIDialogQZCTest, ARunIsLargeFrom100000On) {
  dialog.CreateProgress("Writing", 99999);
  EXPECT_THAT(Step(50001), ElementsAre(Status(" 50.0%"), "KeyPress 27", Status(" 50.0%")));
  dialog.CreateProgress("Writing", 100000);
  EXPECT_THAT(Step(50001), ElementsAre(Status("  0.0%")));
}

TEST_F(UIDialogQZCTest, CountsBelowZeroHaveThousandsToo) {
  dialog.CreateProgress("Writing", 100000);
  EXPECT_THAT(Step(-1500), ElementsAre(Status("  0.0%")));
  EXPECT_THAT(Step(-2000), ElementsAre(Status("100.0%"), "KeyPress 27", Status("100.0%")));
  EXPECT_THAT(Step(0), ElementsAre(Status("100.0%")));
}

TEST_F(UIDialogQZCTest, RunsShowTheMessageOfTheirText) {
  const support::FilledStatusMessages texts;
  dialog.CreateProgress("Writing", 200000);
  EXPECT_THAT(Step(1), ElementsAre(Status("<3>  0.0%")));
  EXPECT_THAT(Step(20000), ElementsAre(Status("<3> 10.0%"), "KeyPress 27", Status("<3> 10.0%")));
  dialog.UpdateProgress("Scanning");
  EXPECT_THAT(Step(21000), ElementsAre(Status("<4> 10.5%")));
  dialog.ResetWait("Anything", 100);
  EXPECT_THAT(Step(50), ElementsAre(Status("<1> 50.0%"), "KeyPress 27", Status("<1> 50.0%")));
}

TEST_F(UIDialogQZCTest, EveryNewRunPollsAtItsFirstStep) {
  const std::vector<std::function<void()>> begins = {
      [this] { dialog.CreateProgress("Writing", 100); },
      [this] { dialog.ResetWait("Writing", 100); }};
  for (const auto& begin : begins) {
    begin();
    Step(10);
    begin();
    EXPECT_THAT(Step(10), ElementsAre(Status(" 10.0%"), "KeyPress 27", Status(" 10.0%")));
  }
}

TEST_F(UIDialogQZCTest, UpdateProgressKeepsTotalAndPolls) {
  dialog.CreateProgress("Writing", 100);
  Step(10);
  dialog.UpdateProgress("Scanning");
  EXPECT_STREQ(CurrentProgress().text, "Scanning");
  EXPECT_EQ(CurrentProgress().messageNumber, 4);
  EXPECT_THAT(Step(12), ElementsAre(Status(" 12.0%")));
}

TEST_F(UIDialogQZCTest, EndProgressMakesTheNextStep100UnderTheOldNumber) {
  const support::FilledStatusMessages texts;
  dialog.CreateProgress("Writing", 100);
  Step(50);
  dialog.EndProgress();
  EXPECT_STREQ(CurrentProgress().text, "");
  EXPECT_EQ(CurrentProgress().total, 0);
  EXPECT_FALSE(CurrentProgress().shown);
  EXPECT_THAT(Step(51), ElementsAre(Status("<3>100.0%"), "KeyPress 27", Status("<3>100.0%")));
}

TEST_F(UIDialogQZCTest, StepBeforeAnyRunShows100) {
  EXPECT_THAT(Step(5), ElementsAre(Status("100.0%"), "KeyPress 27", Status("100.0%")));
}

TEST_F(UIDialogQZCTest, TextsAreCutTo279Characters) {
  dialog.CreateProgress(std::string(279, 'a').c_str(), 1);
  EXPECT_EQ(CurrentProgress().text, std::string(279, 'a'));
  dialog.UpdateProgress(std::string(280, 'b').c_str());
  EXPECT_EQ(CurrentProgress().text, std::string(279, 'b'));
  dialog.ResetWait("Writing", 1);
  EXPECT_STREQ(CurrentProgress().text, "Writing");
}

TEST_F(UIDialogQZCTest, PostTextsSetThePostPhaseFromEveryOperationThatClassifies) {
  const char* const text = "Post-processing phase 2";
  const std::vector<std::function<void()>> operations = {[&] { dialog.CreateProgress(text, 1); },
                                                         [&] { dialog.ResetWait(text, 1); },
                                                         [&] { dialog.UpdateProgress(text); }};
  for (const auto& operation : operations) {
    ResetAbortState();
    operation();
    EXPECT_TRUE(CurrentRunFlags().postPhase);
    EXPECT_EQ(CurrentProgress().messageNumber, 10);
  }
}

// --- State that is the library's ---

TEST_F(UIDialogQZCTest, ProgressIsSharedByAllObjectsAndOutlivesThem) {
  {
    UIDialogQZC earlier;
    static_cast<UIDialog&>(earlier).CreateProgress("Writing", 200);
    static_cast<UIDialog&>(earlier).SetProgress(20);
  }
  EXPECT_THAT(Step(24), ElementsAre(Status(" 12.0%")));
}

TEST_F(UIDialogQZCTest, ResetAbortStateLeavesTheProgressRunAsItIs) {
  dialog.CreateProgress("Writing", 200);
  Step(20);
  ResetAbortState();
  EXPECT_STREQ(CurrentProgress().text, "Writing");
  EXPECT_THAT(Step(24), ElementsAre(Status(" 12.0%")));
}

TEST_F(UIDialogQZCTest, ResetAbortStateClearsAllFourFlags) {
  host.escapePressed = true;
  PollEscape();
  SetPostPhase();
  SetMemoryLimit();
  SetExceptionRaised();
  const RunFlags& flags = CurrentRunFlags();
  EXPECT_TRUE(flags.abort && flags.postPhase && flags.memoryLimit && flags.exceptionRaised);
  ResetAbortState();
  EXPECT_FALSE(flags.abort || flags.postPhase || flags.memoryLimit || flags.exceptionRaised);
}

// --- The user's stop ---

TEST_F(UIDialogQZCTest, PollEscapeAnswersTheHostAndNeverClearsTheAbortFlag) {
  EXPECT_FALSE(PollEscape());
  EXPECT_FALSE(CurrentRunFlags().abort);
  host.escapePressed = true;
  EXPECT_TRUE(PollEscape());
  host.escapePressed = false;
  EXPECT_FALSE(PollEscape());
  EXPECT_TRUE(CurrentRunFlags().abort);
  EXPECT_THAT(host.events.Events(), ElementsAre("KeyPress 27", "KeyPress 27", "KeyPress 27"));
}

TEST_F(UIDialogQZCTest, EscapeAtAPollThrowsBeforeTheSecondShow) {
  dialog.CreateProgress("Writing", 100);
  host.escapePressed = true;
  EXPECT_THROW(dialog.SetProgress(10), UIExceptionQZC);
  EXPECT_THAT(host.events.Events(), ElementsAre(Status(" 10.0%"), "KeyPress 27"));
  EXPECT_TRUE(CurrentRunFlags().abort);
  EXPECT_TRUE(CurrentRunFlags().exceptionRaised);
  EXPECT_FALSE(CurrentProgress().shown) << "the poll that threw counts as none";
}

TEST_F(UIDialogQZCTest, EscapeThatThrewLeavesTheLastPercentage) {
  dialog.CreateProgress("Writing", 100);
  Step(10);
  host.escapePressed = true;
  EXPECT_THROW(dialog.SetProgress(50), UIExceptionQZC);
  EXPECT_DOUBLE_EQ(CurrentProgress().lastPercentage, 10.0);
}

TEST_F(UIDialogQZCTest, EscapeBetweenPollsIsNotSeen) {
  dialog.CreateProgress("Writing", 100);
  Step(10);
  host.escapePressed = true;
  EXPECT_NO_THROW(dialog.SetProgress(12));
  EXPECT_FALSE(CurrentRunFlags().abort);
  EXPECT_THROW(dialog.SetProgress(14), UIExceptionQZC);
}

TEST_F(UIDialogQZCTest, OnlyOneExceptionIsThrownARunAndTheRestGoesOnAsIfNothingHadHappened) {
  dialog.CreateProgress("Writing", 100);
  host.escapePressed = true;
  EXPECT_THROW(dialog.SetProgress(10), UIExceptionQZC);
  EXPECT_THAT(Step(10), ElementsAre(Status(" 10.0%"), "KeyPress 27", Status(" 10.0%")));
  EXPECT_THAT(Step(12), ElementsAre(Status(" 12.0%")));
  EXPECT_THAT(Step(90), ElementsAre(Status(" 90.0%"), "KeyPress 27", Status(" 90.0%")));
  EXPECT_NO_THROW(dialog.ErrorMessage("worse", true));
}

TEST_F(UIDialogQZCTest, AnotherRunMayThrowAgain) {
  dialog.CreateProgress("Writing", 100);
  host.escapePressed = true;
  EXPECT_THROW(dialog.SetProgress(10), UIExceptionQZC);
  ResetAbortState();
  EXPECT_THROW(dialog.SetProgress(20), UIExceptionQZC);
}

// --- Errors ---

TEST_F(UIDialogQZCTest, WarningIsNotShownAndTheKernelGoesOn) {
  EXPECT_NO_THROW(dialog.ErrorMessage("odd facet", false));
  EXPECT_THAT(host.events.Events(), IsEmpty());
  EXPECT_FALSE(CurrentRunFlags().exceptionRaised);
}

TEST_F(UIDialogQZCTest, FatalErrorThrowsOnceAndIsNotShown) {
  EXPECT_THROW(dialog.ErrorMessage("no way on", true), UIExceptionQZC);
  EXPECT_NO_THROW(dialog.ErrorMessage("no way on", true));
  EXPECT_THAT(host.events.Events(), IsEmpty());
  EXPECT_TRUE(CurrentRunFlags().exceptionRaised);
  EXPECT_FALSE(CurrentRunFlags().abort);
}

TEST_F(UIDialogQZCTest, EscapeBehindAFatalErrorThrowsNothingButIsRemembered) {
  EXPECT_THROW(dialog.ErrorMessage("no way on", true), UIExceptionQZC);
  dialog.CreateProgress("Writing", 100);
  host.escapePressed = true;
  EXPECT_NO_THROW(dialog.SetProgress(10));
  EXPECT_TRUE(CurrentRunFlags().abort);
}

TEST_F(UIDialogQZCTest, ErrorsForgetTheProgressTextAndNothingElse) {
  const support::FilledStatusMessages texts;
  dialog.CreateProgress("Writing", 100);
  Step(10);
  dialog.ErrorMessage("odd facet", false);
  EXPECT_STREQ(CurrentProgress().text, "");
  EXPECT_THAT(Step(12), ElementsAre(Status("<3> 12.0%")));
}

TEST_F(UIDialogQZCTest, FatalErrorForgetsTheProgressTextBeforeItThrows) {
  dialog.CreateProgress("Writing", 100);
  EXPECT_THROW(dialog.ErrorMessage("Memory limit reached.", true), UIExceptionQZC);
  EXPECT_STREQ(CurrentProgress().text, "");
  EXPECT_TRUE(CurrentRunFlags().memoryLimit);
}

TEST_F(UIDialogQZCTest, MemoryLimitIsKnownByItsExactText) {
  for (const char* text : {"Memory limit reached", "Memory limit reached. ",
                           "memory limit reached.", "Memory limit reached.!", "", "Memory"}) {
    dialog.ErrorMessage(text, false);
    EXPECT_FALSE(CurrentRunFlags().memoryLimit) << text;
  }
  dialog.ErrorMessage("Memory limit reached.", false);
  EXPECT_TRUE(CurrentRunFlags().memoryLimit);
  EXPECT_FALSE(CurrentRunFlags().exceptionRaised);
}

}  // namespace

#include <climits>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "callbacks/UIDlgKernel.h"
#include "callbacks/UIExceptionKernel.h"
#include "support/JobTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIDlgKernelTest : public support::JobTest {
 protected:
  UIDlgKernelTest() { callbacks.SetHost(&progress); }

  // The number under which the host is asked for a text of its own.
  std::string NumberAskedFor(const char* kernelText) {
    host.events.Clear();
    dialog.CreateWait(kernelText);
    return host.events.Events().at(0);
  }

  UIDlgKernel callbacks;
  // The kernel knows no more than the interface.
  UIDialog& dialog = callbacks;
};

TEST_F(UIDlgKernelTest, IsActive) { EXPECT_TRUE(dialog.IsActive()); }

TEST_F(UIDlgKernelTest, WaitsShowTheHostsTextWithoutAPercentage) {
  dialog.CreateWait("Stitching");
  dialog.UpdateWait("Writing");
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 44", "ShowProgress \"message 44\" -1", "IsCancelled",
                          "LoadMessage 48", "ShowProgress \"message 48\" -1", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, EndsOfWaitsAndProgressAreNotPassedOn) {
  dialog.EndWait();
  dialog.EndProgress();
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(UIDlgKernelTest, CreateProgressPassesTheTotalAsThePercentage) {
  dialog.CreateProgress("Sweeping", 250);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 44", "ShowProgress \"message 44\" 250", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, ResetWaitStartsAProgressRunToo) {
  dialog.ResetWait("Computing", 10);
  host.events.Clear();
  dialog.SetProgress(10);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 46", "ShowProgress \"message 46\" 100", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, UpdateProgressShowsItsTextAndLeavesTheCaptionOfTheRun) {
  dialog.CreateProgress("Sweeping", 10);
  host.events.Clear();
  dialog.UpdateProgress("Importing");
  dialog.SetProgress(0);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 45", "ShowProgress \"message 45\" -1", "IsCancelled",
                          "LoadMessage 44", "ShowProgress \"message 44\" 0", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, EndProgressForgetsNeitherCaptionNorTotal) {
  dialog.CreateProgress("Sweeping", 10);
  dialog.EndProgress();
  host.events.Clear();
  dialog.SetProgress(20);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 44", "ShowProgress \"message 44\" 200", "IsCancelled"));
}

struct Step {
  int total;
  int count;
  int percentage;
};

class UIDlgKernelPercentage : public UIDlgKernelTest, public ::testing::WithParamInterface<Step> {};

TEST_P(UIDlgKernelPercentage, CountsWholeTotalsOnly) {
  const Step step = GetParam();
  dialog.CreateProgress("Sweeping", step.total);
  host.events.Clear();
  dialog.SetProgress(step.count);
  EXPECT_EQ(host.events.Events().at(1),
            "ShowProgress \"message 44\" " + std::to_string(step.percentage));
}

INSTANTIATE_TEST_SUITE_P(Steps, UIDlgKernelPercentage,
                         ::testing::Values(Step{100, 0, 0}, Step{100, 50, 0}, Step{100, 99, 0},
                                           Step{100, 100, 100}, Step{100, 199, 100},
                                           Step{100, 200, 200}, Step{1, 3, 300}, Step{0, 5, 0},
                                           Step{0, 0, 0}, Step{-4, 8, 0}, Step{100, -50, 0},
                                           Step{100, -100, -100}, Step{1, 21474836, 2147483600}));

TEST_F(UIDlgKernelTest, StepBeforeAnyProgressRunShowsZeroUnderTheUnknownText) {
  dialog.SetProgress(7);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 2", "ShowProgress \"message 2\" 0", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, KernelTextsAreNumberedByTheirBeginning) {
  const std::vector<std::pair<const char*, int>> numbers = {
      {"Sweeping", 44},   {"Importing", 45}, {"Computing", 46}, {"Preparing", 47}, {"Writing", 48},
      {"Optimising", 49}, {"Opt", 49},       {"Offset", 50},    {"Other", 2},      {"OP tim", 2},
      {"sweep", 2},       {"offset", 2},     {"Xyz", 2},        {"", 2},           {"S", 2},
      {"Op", 2},          {"Sw", 2},         {"Swe", 44},       {"   ", 2},        {nullptr, 2}};
  for (const auto& [text, number] : numbers) {
    EXPECT_EQ(NumberAskedFor(text), "LoadMessage " + std::to_string(number))
        << (text == nullptr ? "null" : text);
  }
}

TEST_F(UIDlgKernelTest, HostWithoutATextIsShownNothingButIsStillAskedToStop) {
  progress.hasEveryMessage = false;
  dialog.CreateWait("Sweeping");
  EXPECT_THAT(host.events.Events(), ElementsAre("LoadMessage 44", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, HostThatHasNoTextMayStillCancel) {
  progress.hasEveryMessage = false;
  progress.cancelFrom = 1;
  EXPECT_THROW(dialog.CreateWait("Sweeping"), UIExceptionKernel);
}

TEST_F(UIDlgKernelTest, NullMessagesAreNoProblemInAnyOperation) {
  dialog.CreateWait(nullptr);
  dialog.UpdateWait(nullptr);
  dialog.CreateProgress(nullptr, 5);
  dialog.ResetWait(nullptr, 5);
  dialog.UpdateProgress(nullptr);
  dialog.ErrorMessage(nullptr, false);
  EXPECT_EQ(host.events.Only({"LoadMessage 2"}).size(), 5u);
}

// The caption is all that can be seen of these texts: it lies behind the table pointer, the flag
// and the host.
TEST_F(UIDlgKernelTest, NullMessageOfAProgressRunIsCaptionedWithTheOperationsName) {
  const auto caption = [this] {
    const char* text = nullptr;
    std::memcpy(&text, reinterpret_cast<const char*>(&callbacks) + 24, sizeof text);
    return std::string(text);
  };
  dialog.CreateProgress(nullptr, 5);
  EXPECT_EQ(caption(), "Kernvale CreateProgress message is null");
  dialog.ResetWait(nullptr, 5);
  EXPECT_EQ(caption(), "Kernvale ResetWait message is null");
}

TEST_F(UIDlgKernelTest, CancelThrowsFromEveryReport) {
  const std::vector<std::function<void(UIDialog&)>> reports = {
      [](UIDialog& d) { d.CreateWait("Sweeping"); },
      [](UIDialog& d) { d.UpdateWait("Sweeping"); },
      [](UIDialog& d) { d.CreateProgress("Sweeping", 5); },
      [](UIDialog& d) { d.ResetWait("Sweeping", 5); },
      [](UIDialog& d) { d.UpdateProgress("Sweeping"); },
      [](UIDialog& d) { d.SetProgress(1); }};
  progress.cancelFrom = 1;
  for (const auto& report : reports) {
    UIDlgKernel fresh;
    fresh.SetHost(&progress);
    EXPECT_THROW(report(fresh), UIExceptionKernel);
    EXPECT_NO_THROW(report(fresh)) << "only the first stop may throw";
  }
}

TEST_F(UIDlgKernelTest, CaptionIsStoredBeforeACancelIsThrown) {
  progress.cancelFrom = 1;
  EXPECT_THROW(dialog.CreateProgress("Sweeping", 5), UIExceptionKernel);
  host.events.Clear();
  dialog.SetProgress(5);
  EXPECT_EQ(host.events.Events().at(1), "ShowProgress \"message 44\" 100");
}

TEST_F(UIDlgKernelTest, ReportsGoOnAfterACancelWasThrown) {
  progress.cancelFrom = 1;
  EXPECT_THROW(dialog.CreateWait("Sweeping"), UIExceptionKernel);
  host.events.Clear();
  dialog.UpdateWait("Sweeping");
  EXPECT_THAT(host.events.Events(),
              ElementsAre("LoadMessage 44", "ShowProgress \"message 44\" -1", "IsCancelled"));
}

TEST_F(UIDlgKernelTest, FatalErrorAfterACancelThrowsNothing) {
  progress.cancelOnlyAt = 1;
  EXPECT_THROW(dialog.CreateWait("Sweeping"), UIExceptionKernel);
  EXPECT_NO_THROW(dialog.ErrorMessage("broken", true));
}

TEST_F(UIDlgKernelTest, CancelAfterAFatalErrorThrowsNothing) {
  EXPECT_THROW(dialog.ErrorMessage("broken", true), UIExceptionKernel);
  progress.cancelFrom = 1;
  EXPECT_NO_THROW(dialog.CreateWait("Sweeping"));
}

TEST_F(UIDlgKernelTest, ErrorsReachNothingOfTheHostsDisplay) {
  dialog.ErrorMessage("odd", false);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(UIDlgKernelTest, FieldsLieInTheOrderOfTheContract) {
  // Table pointer, flag, host, text, total, the two spare integers, working directory.
  ASSERT_EQ(sizeof(UIDlgKernel), 56u);
  callbacks.SetWorkDir("W");
  dialog.CreateProgress("Sweeping", 77);
  EXPECT_THROW(dialog.ErrorMessage("", true), UIExceptionKernel);

  unsigned char bytes[sizeof(UIDlgKernel)];
  std::memcpy(bytes, static_cast<const void*>(&callbacks), sizeof bytes);
  const auto integerAt = [&bytes](std::size_t offset) {
    int value = 0;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
  };
  const auto pointerAt = [&bytes](std::size_t offset) {
    const char* value = nullptr;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
  };
  EXPECT_EQ(bytes[8], 1);
  EXPECT_EQ(pointerAt(16), reinterpret_cast<const char*>(static_cast<HostProgress*>(&progress)));
  EXPECT_STREQ(pointerAt(24), "Sweeping");
  EXPECT_EQ(integerAt(32), 77);
  EXPECT_EQ(integerAt(36), 1000);
  EXPECT_EQ(integerAt(40), 0);
  EXPECT_STREQ(pointerAt(48), "W");
}

}  // namespace

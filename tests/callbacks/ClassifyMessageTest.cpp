#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "callbacks/ClassifyMessage.h"
#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"

namespace {

short NumberOfProgress(const char* text) {
  CurrentProgress().SetText(text);
  return ClassifyProgressMessage();
}

bool IsPostPhase(const char* text) {
  ResetAbortState();
  NumberOfProgress(text);
  return CurrentRunFlags().postPhase;
}

TEST(ClassifyProgressMessage, GoesByTheFirstThreeLetters) {
  const std::vector<std::pair<const char*, int>> numbers = {
      {"Stitching", 2},  {"Writing", 3},   {"Scanning", 4},   {"Optimising", 5},
      {"Offsetting", 6}, {"Preparing", 7}, {"Generating", 8}, {"Cleaning", 9},
      {"Post", 10},      {"Sti", 2},       {"Pos", 10}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(NumberOfProgress(text), number) << text;
}

TEST(ClassifyProgressMessage, IsOneForEveryOtherText) {
  for (const char* text : {"", "S", "St", "Sto", "stitching", "STI", " Sti", "Reading",
                           "Initialising", "XXX", "YYY", "Sweeping", "Wrong"}) {
    EXPECT_EQ(NumberOfProgress(text), 1) << text;
  }
}

TEST(ClassifyProgressMessage, SetsThePostPhaseForATwoAtPlace22OfAPostText) {
  EXPECT_TRUE(IsPostPhase("Post-processing phase 2"));
  EXPECT_EQ(NumberOfProgress("Post-processing phase 2"), 10);
  EXPECT_TRUE(IsPostPhase("Posxxxxxxxxxxxxxxxxxxx2"));
  EXPECT_FALSE(IsPostPhase("Post-processing phase 1"));
  EXPECT_FALSE(IsPostPhase("Post-processing phase2"));    // at 21
  EXPECT_FALSE(IsPostPhase("Post-processing  phase 2"));  // at 23
  EXPECT_FALSE(IsPostPhase("Pre--processing phase 2"));
}

TEST(ClassifyProgressMessage, DoesNotLookBehindAShortPostText) {
  NumberOfProgress("Post-processing phase 2");
  EXPECT_FALSE(IsPostPhase("Post"));
}

TEST(ClassifyProgressMessage, LeavesThePostPhaseSet) {
  EXPECT_TRUE(IsPostPhase("Post-processing phase 2"));
  NumberOfProgress("Post-processing phase 1");
  NumberOfProgress("Writing");
  EXPECT_TRUE(CurrentRunFlags().postPhase);
}

TEST(ClassifyWaitMessage, GoesByTheFirstThreeLetters) {
  const std::vector<std::pair<const char*, int>> numbers = {
      {"Stitching", 22}, {"Initialising", 23}, {"Offsetting (phase 2)... 1", 24}, {"Off", 24}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(ClassifyWaitMessage(text), number) << text;
}

TEST(ClassifyWaitMessage, Is21ForEveryOtherTextAndForRea) {
  for (const char* text : {"Reading", "Rea", "", "O", "Of", "off", "Writing", "Scanning",
                           "Optimising", "Preparing", "Post", "XXX", "YYY"}) {
    EXPECT_EQ(ClassifyWaitMessage(text), 21) << text;
  }
}

TEST(ClassifyWaitMessage, LeavesProgressAndFlagsAlone) {
  ResetAbortState();
  CurrentProgress().SetText("Writing");
  ClassifyWaitMessage("Post-processing phase 2");
  EXPECT_STREQ(CurrentProgress().text, "Writing");
  EXPECT_FALSE(CurrentRunFlags().postPhase);
}

}  // namespace

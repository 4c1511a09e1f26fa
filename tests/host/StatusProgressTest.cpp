// What the status bar's texts and the questions for Escape become while an operation runs.

#include <gtest/gtest.h>
#include <string>

#include "host/qzhost/StatusProgress.h"
#include "platform/HostExecutable.h"

namespace {

using host::ProgressLines;
using host::StatusProgress;

class StatusProgressTest : public testing::Test {
 protected:
  ProgressLines Lines() {
    return ProgressLines(
        ProgressLines::Style::kPlain, [this](const std::string& text) { m_written += text; },
        [] { return 0.0; });
  }

  // What appears for a text of the status bar, by itself.
  std::string Shown(const char* text) {
    const StatusProgress progress("Healing", Lines());
    m_written.clear();
    UpdateStatusBarText(text);
    return m_written;
  }

  std::string m_written;
};

TEST_F(StatusProgressTest, BarePercentageGoesUnderTheOperationsCaption) {
  EXPECT_EQ(Shown(" 42.0%"), "Healing  0.0 s  42%\n");
  EXPECT_EQ(Shown("  1.0%"), "Healing  0.0 s  1%\n");
  EXPECT_EQ(Shown("100.0%"), "Healing  0.0 s  100%\n");
}

TEST_F(StatusProgressTest, PercentageIsNeverRoundedUp) {
  EXPECT_EQ(Shown(" 99.9%"), "Healing  0.0 s  99%\n");
}

TEST_F(StatusProgressTest, MessageTakesTheCaptionsPlace) {
  EXPECT_EQ(Shown("Stitching  42.0%"), "Stitching  0.0 s  42%\n");
  EXPECT_EQ(Shown("Stitching... 42.0%"), "Stitching...  0.0 s  42%\n");
  EXPECT_EQ(Shown("Phase 2100.0%"), "Phase 2  0.0 s  100%\n");
  EXPECT_EQ(Shown("Stitching "), "Stitching  0.0 s\n");
}

TEST_F(StatusProgressTest, ZeroAndWhatIsNoPercentageShowTheCaptionAlone) {
  EXPECT_EQ(Shown("  0.0%"), "Healing  0.0 s\n");
  EXPECT_EQ(Shown(""), "Healing  0.0 s\n");
  EXPECT_EQ(Shown(nullptr), "Healing  0.0 s\n");
  EXPECT_EQ(Shown("%"), "%  0.0 s\n");
  EXPECT_EQ(Shown("Off by some %"), "Off by some %  0.0 s\n");
  EXPECT_EQ(Shown("Off by  inf%"), "Off by  inf%  0.0 s\n");
}

TEST_F(StatusProgressTest, ZeroBetweenTwoPercentagesLeavesTheBar) {
  const StatusProgress progress("Healing", Lines());
  UpdateStatusBarText(" 42.0%");
  m_written.clear();
  UpdateStatusBarText("  0.0%");
  UpdateStatusBarText(" 43.0%");
  EXPECT_EQ(m_written, "");
  UpdateStatusBarText(" 50.0%");
  EXPECT_EQ(m_written, "Healing  0.0 s  50%\n");
}

TEST_F(StatusProgressTest, ItIsCurrentAsLongAsItLivesAndTheStatusBarIsPlainBehindIt) {
  EXPECT_EQ(StatusProgress::Current(), nullptr);
  {
    const StatusProgress progress("Healing", Lines());
    EXPECT_EQ(StatusProgress::Current(), &progress);
  }
  EXPECT_EQ(StatusProgress::Current(), nullptr);
  m_written.clear();
  testing::internal::CaptureStderr();
  UpdateStatusBarText(" 43.0%");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), " 43.0%\n");
  EXPECT_EQ(m_written, "");
}

TEST_F(StatusProgressTest, NothingIsCancelledUnlessTheUserAsks) {
  const StatusProgress progress("Healing", Lines());
  EXPECT_FALSE(KeyPress(27));
  EXPECT_FALSE(KeyPress(13));
  EXPECT_FALSE(progress.WasCancelled());
}

}  // namespace

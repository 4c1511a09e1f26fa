#include <gtest/gtest.h>
#include <string>

#include "host/qzhost/ProgressDisplay.h"

namespace {

using host::ProgressLines;

class ProgressLinesTest : public testing::Test {
 protected:
  ProgressLines Lines(ProgressLines::Style style) {
    return ProgressLines(
        style, [this](const std::string& text) { m_written += text; }, [this] { return m_now; });
  }

  std::string Taken() {
    std::string text;
    text.swap(m_written);
    return text;
  }

  std::string m_written;
  double m_now = 0.0;
};

TEST_F(ProgressLinesTest, PlainStyleWritesALineForEachStageAndEachFurtherTenth) {
  ProgressLines lines = Lines(ProgressLines::Style::kPlain);
  lines.Show("Sweeping", 1);
  EXPECT_EQ(Taken(), "Sweeping  0.0 s  1%\n");
  m_now = 1.25;
  lines.Show("Sweeping", 9);
  EXPECT_EQ(Taken(), "");
  lines.Show("Sweeping", 10);
  EXPECT_EQ(Taken(), "Sweeping  1.2 s  10%\n");
  lines.Show("Sweeping", 19);
  EXPECT_EQ(Taken(), "");
  lines.Show("Writing", -1);
  EXPECT_EQ(Taken(), "Writing  1.2 s\n");
}

TEST_F(ProgressLinesTest, PercentagesOutsideOneToHundredAreNeverShown) {
  for (const int percentage : {-1, 0, 101, 200, 1000, -2147483647 - 1}) {
    ProgressLines lines = Lines(ProgressLines::Style::kTerminal);
    lines.Show("Sweeping", percentage);
    EXPECT_EQ(Taken(), "\rSweeping  0.0 s\x1b[K");
    ProgressLines plain = Lines(ProgressLines::Style::kPlain);
    plain.Show("Sweeping", percentage);
    EXPECT_EQ(Taken(), "Sweeping  0.0 s\n");
  }
}

TEST_F(ProgressLinesTest, TerminalShowsABarThatFillsWithThePercentage) {
  ProgressLines lines = Lines(ProgressLines::Style::kTerminal);
  lines.Show("Sweeping", 50);
  EXPECT_EQ(Taken(), "\rSweeping  0.0 s  [###############...............] 50%\x1b[K");
  m_now = 2.0;
  lines.Show("Sweeping", 100);
  EXPECT_EQ(Taken(), "\rSweeping  2.0 s  [##############################] 100%\x1b[K");
}

TEST_F(ProgressLinesTest, StageKeepsItsPercentageWhenACallCarriesNone) {
  ProgressLines lines = Lines(ProgressLines::Style::kTerminal);
  lines.Show("Sweeping", 50);
  Taken();
  m_now = 1.0;
  lines.Show("Sweeping", -1);
  EXPECT_NE(Taken().find("50%"), std::string::npos);
  lines.Show("Writing", -1);
  EXPECT_EQ(Taken().find('%'), std::string::npos);
}

TEST_F(ProgressLinesTest, TerminalIsRedrawnTenTimesASecondAtMost) {
  ProgressLines lines = Lines(ProgressLines::Style::kTerminal);
  lines.Show("Sweeping", 1);
  Taken();
  m_now = 0.05;
  lines.Show("Sweeping", 2);
  EXPECT_EQ(Taken(), "");
  m_now = 0.15;
  lines.Show("Sweeping", 3);
  EXPECT_NE(Taken(), "");
}

TEST_F(ProgressLinesTest, FinishErasesTheTerminalsLineOnce) {
  ProgressLines lines = Lines(ProgressLines::Style::kTerminal);
  lines.Finish();
  EXPECT_EQ(Taken(), "");
  lines.Show("Sweeping", 1);
  Taken();
  lines.Finish();
  EXPECT_EQ(Taken(), "\r\x1b[K");
  lines.Finish();
  EXPECT_EQ(Taken(), "");
}

TEST_F(ProgressLinesTest, QuietStyleWritesNothing) {
  ProgressLines lines = Lines(ProgressLines::Style::kNone);
  lines.Show("Sweeping", 50);
  lines.Finish();
  EXPECT_EQ(Taken(), "");
}

TEST(HostMessage, EveryNumberOfTheStockOperationsHasItsOwnText) {
  std::string all;
  for (const int number : {2, 44, 45, 46, 47, 48, 49, 50}) {
    const std::string text = host::HostMessage(number);
    EXPECT_FALSE(text.empty()) << number;
    EXPECT_EQ(all.find("|" + text + "|"), std::string::npos) << number;
    all += "|" + text + "|";
  }
}

TEST(HostMessage, OtherNumbersHaveNone) {
  for (const int number : {-1, 0, 1, 3, 43, 51}) EXPECT_EQ(host::HostMessage(number), "");
}

TEST(ProgressDisplay, LoadMessageFillsTheTextOrSaysThereIsNone) {
  host::ProgressDisplay display(true);
  CString text("old");
  EXPECT_TRUE(display.LoadMessage(44, &text));
  EXPECT_STREQ(text, host::HostMessage(44).c_str());
  EXPECT_FALSE(display.LoadMessage(3, &text));
}

}  // namespace

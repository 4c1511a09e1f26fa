#include <gtest/gtest.h>

#include "host/qzhost/StatusBar.h"

namespace {

std::string Shown(const std::string& text) {
  testing::internal::CaptureStderr();
  host::ShowStatus(text);
  return testing::internal::GetCapturedStderr();
}

TEST(StatusBar, ShowsATextOnALineOfItsOwnAndOnlyOnce) {
  EXPECT_EQ(Shown("Sweeping"), "Sweeping\n");
  EXPECT_EQ(Shown("Sweeping"), "");
  EXPECT_EQ(Shown(""), "");
}

TEST(StatusBar, ShowsNothingWhenMuted) {
  host::MuteStatus(true);
  EXPECT_EQ(Shown("Preparing"), "");
  host::MuteStatus(false);
  EXPECT_EQ(Shown("Preparing"), "Preparing\n");
}

}  // namespace

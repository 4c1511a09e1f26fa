#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "host/QZCore/HostControl.h"
#include "platform/HostProgress.h"

namespace {

int g_promptsCleared = 0;
int g_textsCleared = 0;

TEST(HostState, UnitsAndToleranceAreWhatTheExecutableSets) {
  SetHostMetric(false);
  EXPECT_FALSE(IsMetric());
  SetHostMetric(true);
  EXPECT_TRUE(IsMetric());
  SetHostTolerance(0.125);
  EXPECT_EQ(tol, 0.125);
}

TEST(HostState, ClearingReachesItsOwnHandlerOnly) {
  SetClearHandlers([] { ++g_promptsCleared; }, [] { ++g_textsCleared; });
  clearprompt();
  EXPECT_EQ(g_promptsCleared, 1);
  EXPECT_EQ(g_textsCleared, 0);
  cleartext();
  EXPECT_EQ(g_textsCleared, 1);
  SetClearHandlers(nullptr, nullptr);
  clearprompt();
  cleartext();
  EXPECT_EQ(g_promptsCleared, 1);
  EXPECT_EQ(g_textsCleared, 1);
}

TEST(HostState, TemporaryDirectoryExistsAndEndsWithABackslash) {
  const std::string directory = GetTempDirectory().GetString();
  ASSERT_FALSE(directory.empty());
  EXPECT_EQ(directory.back(), '\\');
  EXPECT_EQ(directory.find('/'), std::string::npos);
  FILE* stream = m_fopen("HostStateTest", 1, (directory + "qzhost-host-state-test").c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  m_fclose("HostStateTest", 2, stream);
  std::string native = directory + "qzhost-host-state-test";
  for (char& c : native) {
    if (c == '\\') c = '/';
  }
  EXPECT_TRUE(std::filesystem::remove(native));
}

}  // namespace

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "addin/exports.h"
#include "platform/QZCore.h"
#include "support/TestHost.h"

namespace {

TEST(HostProtocol, VersionIs1500OnEveryCall) {
  EXPECT_EQ(m_version(), 1500);
  EXPECT_EQ(m_version(), 1500);
}

TEST(HostProtocol, MainSetsTheTwoFlagBytesAndNothingElse) {
  const support::TestHost host;
  std::memset(post_args[0], 'x', 256);
  EXPECT_EQ(m_main(), 0);
  EXPECT_EQ(post_args[0][0], 1);
  EXPECT_EQ(post_args[0][1], 0);
  EXPECT_EQ(post_args[0][2], 'x');
  EXPECT_EQ(post_args[0][255], 'x');
  EXPECT_THAT(host.events.Events(), ::testing::IsEmpty());
}

}  // namespace

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "host/qzhost/HostSystem.h"
#include "host/qzhost/KernelMessages.h"
#include "support/TempDirectory.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string LogFile() {
  const char* path = std::getenv("QZ_KERNEL_LOG");
  return path == nullptr ? "" : path;
}

void Say(const std::string& text) {
  std::ofstream(LogFile(), std::ios::app | std::ios::binary) << text;
}

class KernelMessagesTest : public testing::Test {
 protected:
  void SetUp() override { host::SetEnvironmentText("QZ_KERNEL_LOG", ""); }
  void TearDown() override { host::SetEnvironmentText("QZ_KERNEL_LOG", ""); }
};

TEST_F(KernelMessagesTest, ErrorsAndWarningsComeInTheirOrder) {
  const host::KernelMessages messages;
  ASSERT_FALSE(LogFile().empty());
  Say("stage: Reading\nerror: first\nwarning: beware\nerror: second: more\n");
  EXPECT_THAT(messages.Errors(), ElementsAre("first", "second: more"));
  EXPECT_THAT(messages.Warnings(), ElementsAre("beware"));
}

TEST_F(KernelMessagesTest, SilentKernelHasSaidNothing) {
  const host::KernelMessages messages;
  EXPECT_THAT(messages.Errors(), IsEmpty());
}

TEST_F(KernelMessagesTest, TemporaryFileGoesWithTheObject) {
  std::string path;
  {
    const host::KernelMessages messages;
    path = LogFile();
    Say("error: x\n");
    EXPECT_TRUE(host::StateOfFile(path).exists);
  }
  EXPECT_FALSE(host::StateOfFile(path).exists);
  EXPECT_EQ(LogFile(), "");
}

TEST_F(KernelMessagesTest, NamedFileStaysAndItsOlderLinesDoNotCount) {
  const support::TempDirectory directory;
  const std::string path = (directory.Path() / "kernel.log").string();
  support::WriteWholeFile(path, "error: of last week\n");
  host::SetEnvironmentText("QZ_KERNEL_LOG", path);
  {
    const host::KernelMessages messages;
    EXPECT_EQ(LogFile(), path);
    Say("error: of today\n");
    EXPECT_THAT(messages.Errors(), ElementsAre("of today"));
  }
  EXPECT_EQ(support::ReadWholeFile(path), "error: of last week\nerror: of today\n");
}

}  // namespace

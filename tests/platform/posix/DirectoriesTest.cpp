#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "SystemApi.h"
#include "support/TempDirectory.h"

namespace {

namespace fs = std::filesystem;
using support::AddinSpelling;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;

class CurrentDirectory : public testing::Test {
 protected:
  void TearDown() override { fs::current_path(m_before); }

  fs::path m_before = fs::current_path();
  TempDirectory m_directory;
};

TEST_F(CurrentDirectory, SwitchingTakesBackslashes) {
  ASSERT_TRUE(SetCurrentDirectoryA(AddinSpelling(m_directory.Sub("job")).c_str()));
  EXPECT_EQ(fs::canonical(fs::current_path()), fs::canonical(m_directory.Path() / "job"));
}

TEST_F(CurrentDirectory, SwitchingToAMissingDirectoryFails) {
  EXPECT_FALSE(SetCurrentDirectoryA((m_directory.Path() / "none").c_str()));
  EXPECT_EQ(fs::current_path(), m_before);
}

TEST_F(CurrentDirectory, AnswerFitsOrTellsTheSizeItNeeds) {
  fs::current_path(m_directory.Path());
  const std::string expected = fs::current_path().string();
  char buffer[4096];
  const auto size = static_cast<DWORD>(expected.size());
  EXPECT_EQ(GetCurrentDirectoryA(size + 1, buffer), size);
  EXPECT_EQ(buffer, expected);
  buffer[0] = '!';
  EXPECT_EQ(GetCurrentDirectoryA(size, buffer), size + 1);
  EXPECT_EQ(buffer[0], '!');
}

class CopyFileTest : public testing::Test {
 protected:
  std::string In(const std::string& name) { return (m_directory.Path() / name).string(); }

  TempDirectory m_directory;
};

TEST_F(CopyFileTest, ReplacesAnOlderAndLongerFile) {
  std::string bytes(200000, 'x');
  bytes[7] = '\0';
  WriteWholeFile(In("from"), bytes);
  WriteWholeFile(In("to"), std::string(300000, 'y'));
  EXPECT_TRUE(CopyFileA(In("from").c_str(), In("to").c_str(), FALSE));
  EXPECT_EQ(ReadWholeFile(In("to")), bytes);
}

TEST_F(CopyFileTest, TakesBackslashesInBothPaths) {
  WriteWholeFile(In("from"), "abc");
  const std::string directory = AddinSpelling(m_directory.Path());
  EXPECT_TRUE(CopyFileA((directory + "from").c_str(), (directory + "to").c_str(), FALSE));
  EXPECT_EQ(ReadWholeFile(In("to")), "abc");
}

TEST_F(CopyFileTest, RefusesAnExistingTargetWhenAskedTo) {
  WriteWholeFile(In("from"), "abc");
  WriteWholeFile(In("to"), "old");
  EXPECT_FALSE(CopyFileA(In("from").c_str(), In("to").c_str(), TRUE));
  EXPECT_EQ(ReadWholeFile(In("to")), "old");
}

TEST_F(CopyFileTest, MissingSourceLeavesTheTargetAlone) {
  WriteWholeFile(In("to"), "old");
  EXPECT_FALSE(CopyFileA(In("from").c_str(), In("to").c_str(), FALSE));
  EXPECT_EQ(ReadWholeFile(In("to")), "old");
}

TEST_F(CopyFileTest, CopyOntoItselfFailsAndKeepsTheFile) {
  WriteWholeFile(In("from"), "abc");
  fs::create_symlink(In("from"), In("link"));
  EXPECT_FALSE(CopyFileA(In("from").c_str(), In("from").c_str(), FALSE));
  EXPECT_FALSE(CopyFileA(In("from").c_str(), In("link").c_str(), FALSE));
  EXPECT_EQ(ReadWholeFile(In("from")), "abc");
}

TEST_F(CopyFileTest, DirectoryIsNoSourceAndNoTarget) {
  WriteWholeFile(In("from"), "abc");
  m_directory.Sub("folder");
  EXPECT_FALSE(CopyFileA(In("folder").c_str(), In("to").c_str(), FALSE));
  EXPECT_FALSE(CopyFileA(In("from").c_str(), In("folder").c_str(), FALSE));
  EXPECT_FALSE(fs::exists(In("to")));
}

TEST_F(CopyFileTest, KeepsTheTimeOfTheLastChange) {
  WriteWholeFile(In("from"), "abc");
  const auto time = fs::last_write_time(In("from")) - std::chrono::hours(30);
  fs::last_write_time(In("from"), time);
  ASSERT_TRUE(CopyFileA(In("from").c_str(), In("to").c_str(), FALSE));
  EXPECT_EQ(fs::last_write_time(In("to")), time);
}

}  // namespace

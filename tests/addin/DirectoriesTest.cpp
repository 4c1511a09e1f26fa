#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "addin/directories.h"
#include "support/JobTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DirectoriesTest : public support::JobTest {};

TEST(SavePrefix, IsTheLastComponentWithAnUnderscoreForItsLastCharacter) {
  const std::vector<std::pair<std::string, std::string>> prefixes = {
      {"C:\\Jobs\\Part7\\", "Part7_"},
      {"C:\\Work\\Job1\\", "Job1_"},
      {"C:\\A\\B\\", "B_"},
      {"C:\\A\\Bcd", "Bc_"},  // no trailing backslash: the last letter goes
      {"C:\\A\\B", "_"},
      {"Part7\\", "art7_"},     // no separator: the first character goes
      {"\\Part7\\", "Part7_"},  // one at the very front is never looked at
      {"C:\\", ":_"},
      {"C:\\A\\\\", "_"},
      {"\\\\server\\share\\", "share_"},
      {"a\\b", "_"},
      {"C:/Jobs/Part7/", ":/Jobs/Part7_"},  // slashes do not separate
      {"ab", "_"},
      {"a", ""},
      {"\\", ""},
      {"", ""}};
  for (const auto& [directory, prefix] : prefixes) {
    EXPECT_STREQ(SavePrefix(directory.c_str()), prefix.c_str()) << directory;
  }
}

TEST(SavePrefix, SeesNoMoreThan255CharactersOfTheDirectory) {
  const std::string tail(300, 'x');
  const std::string prefix = SavePrefix(("C:\\" + tail + "\\").c_str()).GetString();
  EXPECT_EQ(prefix, std::string(251, 'x') + "_");
}

TEST_F(DirectoriesTest, RegistryIsAskedUnderTheHostsKeyAndClosedAgain) {
  host.stockDataDirectory = "D:\\Keep";
  CString directory;
  EXPECT_TRUE(GetStockDataDirectory(directory));
  EXPECT_STREQ(directory, "D:\\Keep");
  EXPECT_THAT(host.events.Events(),
              ElementsAre("get_REG_KEY",
                          "RegOpen Software\\TestHost\\Configurations\\Variables\\Toolpaths 131097",
                          "GetStringValue Enable Stock Model Data Directory 260", "RegClose"));
}

TEST_F(DirectoriesTest, WithoutTheValueTheDirectoryIsUntouchedAndTheKeyClosed) {
  CString directory = "as it was";
  EXPECT_FALSE(GetStockDataDirectory(directory));
  EXPECT_STREQ(directory, "as it was");
  EXPECT_EQ(host.events.Events().back(), "RegClose");
}

TEST_F(DirectoriesTest, WithoutTheKeyNothingIsReadOrClosed) {
  host.stockDataDirectory = "D:\\Keep";
  host.registryKeyPresent = false;
  CString directory = "as it was";
  EXPECT_FALSE(GetStockDataDirectory(directory));
  EXPECT_STREQ(directory, "as it was");
  EXPECT_THAT(host.events.Only({"GetStringValue", "RegClose"}), IsEmpty());
}

TEST_F(DirectoriesTest, LongestTextOfTheRegistryIsTakenWhole) {
  host.stockDataDirectory = std::string(259, 'k');
  CString directory;
  EXPECT_TRUE(GetStockDataDirectory(directory));
  EXPECT_EQ(directory.GetLength(), 259);
}

TEST_F(DirectoriesTest, HostKeyThatFillsItsBufferIsStillFollowedByTheSubKey) {
  host.registryKey = std::string(260, 'k');
  host.stockDataDirectory = "D:\\Keep";
  CString directory;
  EXPECT_TRUE(GetStockDataDirectory(directory));
  EXPECT_THAT(
      host.events.Only({"RegOpen"}),
      ElementsAre("RegOpen " + host.registryKey + "\\Configurations\\Variables\\Toolpaths 131097"));
}

TEST_F(DirectoriesTest, StockDataDirectoryGetsItsTrailingBackslash) {
  host.stockDataDirectory = "D:\\Keep";
  EXPECT_STREQ(StockDataDirectoryFor("C:\\Jobs\\Part7\\"), "D:\\Keep\\");
  host.stockDataDirectory = "D:\\Keep\\";
  EXPECT_STREQ(StockDataDirectoryFor("C:\\Jobs\\Part7\\"), "D:\\Keep\\");
}

TEST_F(DirectoriesTest, WorkingDirectoryTakesTheMissingValuesPlace) {
  EXPECT_STREQ(StockDataDirectoryFor("C:\\Jobs\\Part7\\"), "C:\\Jobs\\Part7\\");
  EXPECT_STREQ(StockDataDirectoryFor("C:\\Jobs\\Part7"), "C:\\Jobs\\Part7\\");
}

TEST_F(DirectoriesTest, EmptyValueIsADirectoryAllTheSame) {
  host.stockDataDirectory = "";
  EXPECT_STREQ(StockDataDirectoryFor("C:\\Jobs\\Part7\\"), "\\");
}

TEST_F(DirectoriesTest, TrailingBackslashBehindThe255thCharacterIsNotSeen) {
  const std::string seen = std::string(254, 'k') + "\\";
  host.stockDataDirectory = seen;
  EXPECT_EQ(StockDataDirectoryFor("W\\"), seen.c_str());
  const std::string unseen = std::string(255, 'k') + "\\";
  host.stockDataDirectory = unseen;
  EXPECT_EQ(StockDataDirectoryFor("W\\"), (unseen + "\\").c_str());
}

TEST_F(DirectoriesTest, CopyBaseIsDirectoryAndPrefix) {
  EXPECT_STREQ(SaveCopyBase("C:\\Jobs\\Part7\\"), "C:\\Jobs\\Part7\\Part7_");
  host.stockDataDirectory = "D:\\Keep";
  EXPECT_STREQ(SaveCopyBase("C:\\Jobs\\Part7\\"), "D:\\Keep\\Part7_");
}

TEST_F(DirectoriesTest, SaveCopyReplacesAnOlderCopy) {
  support::WriteWholeFile(InJob("a"), "new");
  support::WriteWholeFile(InJob("b"), "older and longer");
  EXPECT_TRUE(SaveCopy(WorkDir() + "a", WorkDir() + "b"));
  EXPECT_EQ(support::ReadWholeFile(InJob("b")), "new");
  EXPECT_THAT(host.events.Events(), ElementsAre("exists job\\a", "copy job\\a -> job\\b"));
}

TEST_F(DirectoriesTest, SaveCopyOfAMissingFileDoesNothing) {
  EXPECT_FALSE(SaveCopy(WorkDir() + "a", WorkDir() + "b"));
  EXPECT_THAT(host.events.Events(), ElementsAre("exists job\\a"));
}

TEST_F(DirectoriesTest, SaveCopyTellsWhenTheCopyFailed) {
  support::WriteWholeFile(InJob("a"), "text");
  host.faults.FailCall("CopyFileA", 1);
  EXPECT_FALSE(SaveCopy(WorkDir() + "a", WorkDir() + "b"));
}

}  // namespace

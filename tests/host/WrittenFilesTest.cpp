#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/qzhost/HostPaths.h"
#include "host/qzhost/WrittenFiles.h"
#include "support/TempDirectory.h"

namespace {

using support::TempDirectory;
using support::WriteWholeFile;
using testing::ElementsAre;
using testing::IsEmpty;

class WrittenFilesTest : public testing::Test {
 protected:
  std::string In(const std::string& name) {
    return host::FullPath((m_directory.Path() / name).string());
  }

  TempDirectory m_directory;
};

TEST_F(WrittenFilesTest, UntouchedFilesAreNotWritten) {
  WriteWholeFile(In("old"), "x");
  const host::WrittenFiles written({m_directory.Path().string()});
  EXPECT_THAT(written.Paths(), IsEmpty());
  EXPECT_FALSE(written.IsNew(In("old")));
}

TEST_F(WrittenFilesTest, NewAndChangedFilesAreWritten) {
  WriteWholeFile(In("changed"), "x");
  WriteWholeFile(In("old"), "x");
  const host::WrittenFiles written({m_directory.Path().string()});
  WriteWholeFile(In("changed"), "xy");
  WriteWholeFile(In("new"), "x");
  EXPECT_THAT(written.Paths(), ElementsAre(In("changed"), In("new")));
}

TEST_F(WrittenFilesTest, ReplacementOfTheSameSizeAndAgeIsWritten) {
  WriteWholeFile(In("a"), "x");
  WriteWholeFile(In("b"), "y");
  std::filesystem::last_write_time(In("b"), std::filesystem::last_write_time(In("a")));
  const host::WrittenFiles written({m_directory.Path().string()});
  std::filesystem::remove(In("a"));
  std::filesystem::rename(In("b"), In("a"));
  EXPECT_TRUE(written.IsNew(In("a")));
}

TEST_F(WrittenFilesTest, RemovedFilesAreNotWritten) {
  WriteWholeFile(In("old"), "x");
  const host::WrittenFiles written({m_directory.Path().string()});
  std::filesystem::remove(In("old"));
  EXPECT_THAT(written.Paths(), IsEmpty());
  EXPECT_FALSE(written.IsNew(In("old")));
}

TEST_F(WrittenFilesTest, DirectoryNamedTwiceCountsOnce) {
  const std::string directory = m_directory.Path().string();
  const host::WrittenFiles written({directory, directory + "/."});
  WriteWholeFile(In("new"), "x");
  EXPECT_THAT(written.Paths(), ElementsAre(In("new")));
}

TEST_F(WrittenFilesTest, MissingDirectoryHasNoFiles) {
  const host::WrittenFiles written({In("none")});
  EXPECT_THAT(written.Paths(), IsEmpty());
}

TEST(AddInDirectory, IsFullWithBackslashesAndOneAtTheEnd) {
  const TempDirectory directory;
  const std::string expected = support::AddinSpelling(directory.Path());
  EXPECT_EQ(host::AddInDirectory(directory.Path().string()), expected);
  EXPECT_EQ(host::AddInDirectory(directory.Path().string() + "/"), expected);
  EXPECT_EQ(host::AddInDirectory(directory.Path().string() + "/a/../"), expected);
}

}  // namespace

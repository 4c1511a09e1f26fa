#include <cerrno>
#include <climits>
#include <gtest/gtest.h>
#include <string>

#include "SystemApi.h"
#include "platform/files.h"
#include "support/TempDirectory.h"

namespace {

using support::AddinSpelling;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;

TEST(OpenStdFile, TurnsBackslashes) {
  const TempDirectory directory;
  const std::string path = AddinSpelling(directory.Sub("job")) + "StockModelInput.tmp";
  FILE* stream = OpenStdFile(path.c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(std::fwrite("abc", 1, 3, stream), 3U);
  std::fclose(stream);
  EXPECT_EQ(ReadWholeFile(directory.Path() / "job" / "StockModelInput.tmp"), "abc");
}

TEST(OpenStdFile, MissingFileGivesNull) {
  const TempDirectory directory;
  EXPECT_EQ(OpenStdFile((directory.Path() / "none").c_str(), "rb"), nullptr);
  EXPECT_EQ(OpenStdFile(nullptr, "rb"), nullptr);
}

TEST(OpenStdFile, PathLongerThanTheSystemTakesGivesNullAndOpensNoShorterOne) {
  const TempDirectory directory;
  std::string path = directory.Path().string();
  while (path.size() < PATH_MAX) path += "/.";
  path += "/file";
  EXPECT_EQ(OpenStdFile(path.c_str(), "wb"), nullptr);
  EXPECT_TRUE(support::NamesIn(directory.Path()).empty());
}

TEST(RemoveStdFile, TurnsBackslashes) {
  const TempDirectory directory;
  WriteWholeFile(directory.Path() / "old", "x");
  EXPECT_EQ(RemoveStdFile((AddinSpelling(directory.Path()) + "old").c_str()), 0);
  EXPECT_TRUE(support::NamesIn(directory.Path()).empty());
  EXPECT_NE(RemoveStdFile((AddinSpelling(directory.Path()) + "old").c_str()), 0);
}

TEST(FopenS, GivesTheStreamOrTheReason) {
  const TempDirectory directory;
  const std::string path = AddinSpelling(directory.Path()) + "file";
  FILE* stream = reinterpret_cast<FILE*>(&stream);
  EXPECT_EQ(fopen_s(&stream, path.c_str(), "rb"), ENOENT);
  EXPECT_EQ(stream, nullptr);
  ASSERT_EQ(fopen_s(&stream, path.c_str(), "wb"), 0);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  EXPECT_EQ(fopen_s(&stream, nullptr, "rb"), EINVAL);
  EXPECT_EQ(fopen_s(nullptr, path.c_str(), "rb"), EINVAL);
}

}  // namespace

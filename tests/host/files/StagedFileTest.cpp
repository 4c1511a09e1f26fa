#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <system_error>

#include "formats/FileError.h"
#include "host/files/StagedFile.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using host::StagedFile;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;

TEST(StagedFile, LeavesTheOldFileUntilItIsPutInPlace) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.txt", "old");
  StagedFile staged(directory / "a.txt");
  WriteWholeFile(staged.TemporaryPath(), "new");
  EXPECT_EQ(ReadWholeFile(directory / "a.txt"), "old");
  staged.PutInPlace();
  EXPECT_EQ(ReadWholeFile(directory / "a.txt"), "new");
  EXPECT_FALSE(std::filesystem::exists(staged.TemporaryPath()));
}

TEST(StagedFile, RemovesWhatWasNeverPutInPlace) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.txt", "old");
  std::string temporary;
  {
    const StagedFile staged(directory / "a.txt");
    temporary = staged.TemporaryPath();
    WriteWholeFile(temporary, "half");
  }
  EXPECT_FALSE(std::filesystem::exists(temporary));
  EXPECT_EQ(ReadWholeFile(directory / "a.txt"), "old");
}

TEST(StagedFile, TakesNobodysFileForTheTemporaryOne) {
  const TempDirectory directory;
  WriteWholeFile(directory / "a.txt.0.new", "mine");
  const StagedFile staged(directory / "a.txt");
  EXPECT_NE(staged.TemporaryPath(), directory / "a.txt.0.new");
}

TEST(StagedFile, NamesThePlaceWhereTheTemporaryFileWasMeant) {
  const TempDirectory directory;
  const StagedFile staged(directory / "a.txt");
  const auto messageOf = [&staged](const std::string& file) {
    return MessageOf<formats::FileError>([&] {
      staged.Write([&](const std::string& path) {
        throw formats::FileError((file.empty() ? path : file) + ": full");
      });
    });
  };
  EXPECT_EQ(messageOf(""), (directory / "a.txt") + ": full");
  EXPECT_EQ(messageOf("b.txt"), "b.txt: full");
}

TEST(StagedFile, FollowsLinksToAFileThatIsNotYetThere) {
  const TempDirectory directory;
  std::error_code error;
  std::filesystem::create_symlink("second.txt", directory / "first.txt", error);
  if (error) GTEST_SKIP() << "this system lets nobody make links: " << error.message();
  std::filesystem::create_symlink(directory / "a.txt", directory / "second.txt");
  StagedFile staged(directory / "first.txt");
  WriteWholeFile(staged.TemporaryPath(), "new");
  staged.PutInPlace();
  EXPECT_TRUE(std::filesystem::is_symlink(directory / "first.txt"));
  EXPECT_TRUE(std::filesystem::is_symlink(directory / "second.txt"));
  EXPECT_FALSE(std::filesystem::is_symlink(directory / "a.txt"));
  EXPECT_EQ(ReadWholeFile(directory / "a.txt"), "new");
}

TEST(StagedFile, ThrowsWhenTheTemporaryFileWasNeverWritten) {
  const TempDirectory directory;
  StagedFile staged(directory / "a.txt");
  EXPECT_THROW(staged.PutInPlace(), formats::FileError);
}

}  // namespace

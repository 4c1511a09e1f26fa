#include <gmock/gmock.h>

#include "formats/FileBuilder.h"
#include "formats/FileError.h"
#include "host/files/StagedFile.h"

namespace {

using host::StagedFile;

TEST(StagedFile, LeavesTheOldFileUntilItIsPutInPlace) {
  const ScratchDirectory directory;
  WriteContent(directory / "a.txt", "old");
  StagedFile staged(directory / "a.txt");
  WriteContent(staged.TemporaryPath(), "new");
  EXPECT_EQ(ReadContent(directory / "a.txt"), "old");
  staged.PutInPlace();
  EXPECT_EQ(ReadContent(directory / "a.txt"), "new");
  EXPECT_FALSE(std::filesystem::exists(staged.TemporaryPath()));
}

TEST(StagedFile, RemovesWhatWasNeverPutInPlace) {
  const ScratchDirectory directory;
  WriteContent(directory / "a.txt", "old");
  std::string temporary;
  {
    const StagedFile staged(directory / "a.txt");
    temporary = staged.TemporaryPath();
    WriteContent(temporary, "half");
  }
  EXPECT_FALSE(std::filesystem::exists(temporary));
  EXPECT_EQ(ReadContent(directory / "a.txt"), "old");
}

TEST(StagedFile, TakesNobodysFileForTheTemporaryOne) {
  const ScratchDirectory directory;
  WriteContent(directory / "a.txt.0.new", "mine");
  const StagedFile staged(directory / "a.txt");
  EXPECT_NE(staged.TemporaryPath(), directory / "a.txt.0.new");
}

TEST(StagedFile, NamesThePlaceWhereTheTemporaryFileWasMeant) {
  const ScratchDirectory directory;
  const StagedFile staged(directory / "a.txt");
  EXPECT_EQ(staged.AboutThePlace(staged.TemporaryPath() + ": full"),
            (directory / "a.txt") + ": full");
  EXPECT_EQ(staged.AboutThePlace("b.txt: full"), "b.txt: full");
}

TEST(StagedFile, ThrowsWhenTheTemporaryFileWasNeverWritten) {
  const ScratchDirectory directory;
  StagedFile staged(directory / "a.txt");
  EXPECT_THROW(staged.PutInPlace(), formats::FileError);
}

}  // namespace

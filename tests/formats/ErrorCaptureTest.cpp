#include <gtest/gtest.h>
#include <string_view>
#include <vector>

#include "formats/ErrorCapture.h"
#include "formats/FileError.h"
#include "support/TempDirectory.h"

namespace {

using support::TempDirectory;
using support::WriteWholeFile;

std::vector<formats::CapturedMessage> EntriesOf(std::string_view content) {
  const TempDirectory directory;
  WriteWholeFile(directory / "ErrorCapture.txt", content);
  return formats::ReadErrorCapture(directory / "ErrorCapture.txt");
}

TEST(ReadErrorCapture, TakesErrorsAndWarningsInFileOrder) {
  const auto entries = EntriesOf(
      "\nWarning Message Received:\nfirst\n"
      "\nError Message Received:\nsecond\n");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_FALSE(entries[0].fatal);
  EXPECT_EQ(entries[0].text, "first");
  EXPECT_TRUE(entries[1].fatal);
  EXPECT_EQ(entries[1].text, "second");
}

TEST(ReadErrorCapture, UnderstandsCarriageReturns) {
  const auto entries = EntriesOf("\r\nError Message Received:\r\nbad tool\r\n");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].text, "bad tool");
}

TEST(ReadErrorCapture, KeepsTheLinesOfALongMessage) {
  const auto entries = EntriesOf(
      "\nError Message Received:\nline 1\n\nline 3\n"
      "\nWarning Message Received:\nnext\n");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].text, "line 1\n\nline 3");
  EXPECT_EQ(entries[1].text, "next");
}

TEST(ReadErrorCapture, FindsNothingInAnEmptyOrForeignFile) {
  EXPECT_TRUE(EntriesOf("").empty());
  EXPECT_TRUE(EntriesOf("hello\n\nworld\n").empty());
}

TEST(ReadErrorCapture, TakesAnEntryCutShort) {
  const auto entries = EntriesOf("\nError Message Received:");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].text, "");
}

TEST(ReadErrorCapture, ThrowsWhenTheFileIsMissing) {
  const TempDirectory directory;
  EXPECT_THROW(formats::ReadErrorCapture(directory / "none.txt"), formats::FileError);
}

}  // namespace

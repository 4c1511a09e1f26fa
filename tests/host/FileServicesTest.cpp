#include <cstdio>
#include <gtest/gtest.h>
#include <string>

#include "host/QZCore/HostControl.h"
#include "support/TempDirectory.h"

namespace {

using support::AddinSpelling;
using support::ReadWholeFile;
using support::WriteWholeFile;

class FileServices : public testing::Test {
 protected:
  std::string Spelled(const std::string& name) { return AddinSpelling(m_directory.Path()) + name; }

  support::TempDirectory m_directory;
};

TEST_F(FileServices, OpenStreamIsReportedWithUnitLineAndPathUntilItIsClosed) {
  const std::string path = Spelled("a.tmp");
  FILE* stream = m_fopen("QZTUtlA", 123, path.c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(OpenStreamCount(), 1);
  EXPECT_EQ(OpenStreamReport(), CString(("QZTUtlA:123 " + path + " (wb)\n").c_str()));
  m_fclose("QZTUtlA", 130, stream);
  EXPECT_EQ(OpenStreamCount(), 0);
  EXPECT_STREQ(OpenStreamReport(), "");
}

TEST_F(FileServices, OldestOpenStreamIsReportedFirst) {
  FILE* first = m_fopen("A", 1, Spelled("1").c_str(), "wb");
  FILE* second = m_fopen("B", 2, Spelled("2").c_str(), "wb");
  const std::string report = OpenStreamReport().GetString();
  EXPECT_LT(report.find("A:1 "), report.find("B:2 "));
  m_fclose("A", 3, first);
  m_fclose("B", 4, second);
}

TEST_F(FileServices, StreamsOnAFileCanBeClosedWithoutTheOthers) {
  m_fopen("A", 1, Spelled("1").c_str(), "wb");
  FILE* other = m_fopen("B", 2, Spelled("2").c_str(), "wb");
  m_fopen("C", 3, Spelled("1").c_str(), "rb");
  CloseStreamsOn(Spelled("1").c_str());
  EXPECT_EQ(OpenStreamReport(), CString(("B:2 " + Spelled("2") + " (wb)\n").c_str()));
  CloseStreamsOn(Spelled("3").c_str());
  EXPECT_EQ(OpenStreamCount(), 1);
  m_fclose("B", 4, other);
}

TEST_F(FileServices, MissingFileGivesNullAndNoEntry) {
  EXPECT_EQ(m_fopen("QZTUtlA", 1, Spelled("none").c_str(), "rb"), nullptr);
  EXPECT_EQ(m_fopen("QZTUtlA", 1, nullptr, "rb"), nullptr);
  EXPECT_EQ(OpenStreamCount(), 0);
}

TEST_F(FileServices, ClosingNullDoesNothing) {
  m_fclose("QZTUtlA", 1, nullptr);
  EXPECT_EQ(OpenStreamCount(), 0);
  EXPECT_STREQ(OpenStreamReport(), "");
}

TEST_F(FileServices, JoinsDirectoryAndNameAndReportsSuccess) {
  WriteWholeFile(m_directory.Path() / "a.tmp", "abc");
  bool status = false;
  const std::string directory = AddinSpelling(m_directory.Path());
  FILE* stream = m_fopen_hl("QZTUTLA2", 7, directory.c_str(), "a.tmp", "rb", &status);
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(status);
  m_fclose("QZTUTLA2", 8, stream);
}

TEST_F(FileServices, JoinAddsTheSeparatorThatTheDirectoryLacks) {
  WriteWholeFile(m_directory.Path() / "a.tmp", "abc");
  bool status = false;
  FILE* stream =
      m_fopen_hl("QZTUTLA2", 7, m_directory.Path().string().c_str(), "a.tmp", "rb", &status);
  ASSERT_NE(stream, nullptr);
  m_fclose("QZTUTLA2", 8, stream);
}

TEST_F(FileServices, NameThatIsAFullPathStandsAsItIs) {
  WriteWholeFile(m_directory.Path() / "a.tmp", "abc");
  bool status = false;
  FILE* stream =
      m_fopen_hl("QZTUTLA2", 7, "\\no\\such\\place\\", Spelled("a.tmp").c_str(), "rb", &status);
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(status);
  m_fclose("QZTUTLA2", 8, stream);
}

TEST_F(FileServices, NameAloneIsOpenedWithoutADirectory) {
  bool status = false;
  FILE* stream = m_fopen_hl("U", 1, nullptr, Spelled("new").c_str(), "wb", &status);
  ASSERT_NE(stream, nullptr);
  m_fclose("U", 2, stream);
  stream = m_fopen_hl("U", 1, "", Spelled("new").c_str(), "rb", &status);
  ASSERT_NE(stream, nullptr);
  m_fclose("U", 2, stream);
}

TEST_F(FileServices, FailedOpenClearsTheStatusThatWasSetBefore) {
  bool status = true;
  const std::string directory = AddinSpelling(m_directory.Path());
  EXPECT_EQ(m_fopen_hl("U", 1, directory.c_str(), "none", "rb", &status), nullptr);
  EXPECT_FALSE(status);
  status = true;
  EXPECT_EQ(m_fopen_hl("U", 1, directory.c_str(), nullptr, "rb", &status), nullptr);
  EXPECT_FALSE(status);
  EXPECT_EQ(m_fopen_hl("U", 1, directory.c_str(), "none", "rb", nullptr), nullptr);
}

TEST_F(FileServices, ExistenceTakesBothSeparators) {
  WriteWholeFile(m_directory.Sub("sub") / "a.tmp", "abc");
  const std::string native = m_directory.Path().string();
  EXPECT_NE(file_exists((native + "/sub/a.tmp").c_str(), 0), 0);
  EXPECT_NE(file_exists((native + "\\sub\\a.tmp").c_str(), 0), 0);
  EXPECT_EQ(file_exists((native + "\\sub\\b.tmp").c_str(), 0), 0);
  EXPECT_EQ(file_exists((native + "\\sub").c_str(), 0), 0);
  EXPECT_EQ(file_exists(nullptr, 0), 0);
}

// Runs last of its suite: a stray close stays in the report.
TEST_F(FileServices, ZClosingTwiceIsReportedInsteadOfDone) {
  FILE* stream = m_fopen("U", 1, Spelled("a").c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  m_fclose("U", 2, stream);
  m_fclose("U", 3, stream);
  EXPECT_EQ(OpenStreamCount(), 0);
  EXPECT_STREQ(OpenStreamReport(), "U:3 closed a stream that is not open\n");
}

}  // namespace

// Directories of every sort of name that the system's code page can spell.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "built/BuiltJobs.h"
#include "built/FaultyHost.h"
#include "built/Workplace.h"
#include "host/qzhost/AddIn.h"
#include "platform/PathText.h"
#include "support/TempDirectory.h"

namespace {

class PathsTest : public ::testing::TestWithParam<BuiltJob> {
 protected:
  /// The job makes the same in this directory as in an ordinary one.
  void ExpectTheSameIn(const std::filesystem::path& directory) {
    FaultyHost host;
    const host::AddIn addIn(BuiltAddIn());
    const Workplace plain(GetParam());
    const Workplace other(GetParam(), directory);
    for (const Workplace* place : {&plain, &other}) {
      place->Fill();
      EXPECT_EQ(place->Call(addIn, &host), 1);
    }
    EXPECT_NE(other.Output(), "none");
    EXPECT_TRUE(other.Output() == plain.Output());
    EXPECT_EQ(support::NamesIn(other.Directory()), support::NamesIn(plain.Directory()));
    EXPECT_EQ(support::NamesIn(other.Copies()).size(), support::NamesIn(plain.Copies()).size());
  }

  const support::TempDirectory m_folder;
};

TEST_P(PathsTest, NamesWithSpacesMakeNoDifference) {
  ExpectTheSameIn(m_folder.Path() / "a job  with spaces");
}

TEST_P(PathsTest, CharactersOfTheCodePageMakeNoDifference) {
  const std::filesystem::path name = u8"Gr\u00f6\u00dfe 3 \u20ac";
  if (PathFromText(TextFromPath(name)) != name) {
    GTEST_SKIP() << "the system's code page has not these characters";
  }
  ExpectTheSameIn(m_folder.Path() / name);
}

// Filled up with directories, in names of which the copies' prefix is one.
TEST_P(PathsTest, OutputOf255CharactersMakesNoDifference) {
  constexpr std::size_t kLongest = 255;
  const std::string output = GetParam().output;
  std::filesystem::path directory = m_folder.Path();
  std::size_t left = kLongest - support::AddinSpelling(directory).size() - output.size();
  while (left > 0) {
    // With its separator; what is left must be none or enough for another one.
    const std::size_t length = left <= 60 ? left : std::min<std::size_t>(50, left - 10);
    directory /= std::string(length - 1, 'x');
    left -= length;
  }
  ASSERT_EQ((support::AddinSpelling(directory) + output).size(), kLongest);
  ExpectTheSameIn(directory);
}

INSTANTIATE_TEST_SUITE_P(Exports, PathsTest, ::testing::ValuesIn(BuiltJobs()),
                         [](const auto& job) { return std::string(job.param.name); });

}  // namespace

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "addin/CurrentDirectoryScope.h"
#include "support/JobTest.h"

namespace {

using ::testing::ElementsAre;

class CurrentDirectoryScopeTest : public support::JobTest {};

TEST_F(CurrentDirectoryScopeTest, SwitchesAndPutsBack) {
  {
    const CurrentDirectoryScope inJob(WorkDir());
    EXPECT_TRUE(IsInJob());
  }
  EXPECT_TRUE(IsAtHome());
  EXPECT_THAT(host.events.Events(), ElementsAre("getcwd 256", "chdir job\\", "chdir home"));
}

TEST_F(CurrentDirectoryScopeTest, PutsBackWhenAnExceptionPasses) {
  try {
    const CurrentDirectoryScope inJob(WorkDir());
    throw std::runtime_error("passing");
  } catch (const std::runtime_error&) {
  }
  EXPECT_TRUE(IsAtHome());
}

TEST_F(CurrentDirectoryScopeTest, DirectoryThatCannotBeEnteredIsNoError) {
  { const CurrentDirectoryScope nowhere(WorkDir() + "missing\\"); }
  EXPECT_TRUE(IsAtHome());
  EXPECT_THAT(host.events.Events(),
              ElementsAre("getcwd 256", "chdir job\\missing\\ fails", "chdir home"));
}

// The process in a directory of its own whose path has `length` characters.
class InDirectoryOfLength {
 public:
  explicit InDirectoryOfLength(std::size_t length) {
    const std::size_t taken = m_root.Path().string().size() + 1;
    m_path = m_root.Sub(std::string(length - taken, 'd'));
    std::filesystem::current_path(m_path);
  }
  InDirectoryOfLength(const InDirectoryOfLength&) = delete;
  InDirectoryOfLength& operator=(const InDirectoryOfLength&) = delete;
  // A system may refuse to remove the directory that the process is in.
  ~InDirectoryOfLength() { std::filesystem::current_path(m_root.Path().parent_path()); }

  bool IsCurrent() const { return std::filesystem::current_path() == m_path; }

 private:
  support::TempDirectory m_root;
  std::filesystem::path m_path;
};

TEST_F(CurrentDirectoryScopeTest, PutsBackADirectoryOf255Characters) {
  const InDirectoryOfLength before(255);
  {
    const CurrentDirectoryScope inJob(WorkDir());
    EXPECT_TRUE(IsInJob());
  }
  EXPECT_TRUE(before.IsCurrent());
}

TEST_F(CurrentDirectoryScopeTest, StaysWhenTheDirectoryBeforeHas256Characters) {
  const InDirectoryOfLength before(256);
  { const CurrentDirectoryScope inJob(WorkDir()); }
  EXPECT_TRUE(IsInJob());
  EXPECT_THAT(host.events.Events(), ElementsAre("getcwd 256", "chdir job\\", "chdir  fails"));
}

}  // namespace

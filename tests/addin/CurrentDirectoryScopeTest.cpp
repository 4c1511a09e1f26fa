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
  EXPECT_THAT(host.events.Events(), ElementsAre("getcwd", "chdir job\\", "chdir home"));
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
              ElementsAre("getcwd", "chdir job\\missing\\ fails", "chdir home"));
}

}  // namespace

// The user's stop on its way to an operation that asks for Escape.

#include <gtest/gtest.h>
#include <signal.h>

#include "host/qzhost/StatusProgress.h"
#include "platform/HostExecutable.h"

namespace {

TEST(Stop, InterruptAnswersTheQuestionForEscapeAndNoOther) {
  const host::StatusProgress progress("Healing", true);
  raise(SIGINT);
  EXPECT_FALSE(KeyPress(13));
  EXPECT_FALSE(progress.WasCancelled()) << "the operation does not know yet";
  EXPECT_TRUE(KeyPress(27));
  EXPECT_TRUE(progress.WasCancelled());
  EXPECT_TRUE(KeyPress(27)) << "however often it asks";
}

TEST(Stop, NextOperationBeginsAfresh) {
  {
    const host::StatusProgress progress("Healing", true);
    raise(SIGINT);
    EXPECT_TRUE(KeyPress(27));
  }
  const host::StatusProgress progress("Healing", true);
  EXPECT_FALSE(KeyPress(27));
}

}  // namespace

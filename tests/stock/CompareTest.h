#pragma once

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "stock/SweepPartStockCompare.h"
#include "support/Attempt.h"
#include "support/CompareJobTest.h"

namespace compare_test {

// A comparison of one facet with another, in the directory of the job; copies go to another.
class CompareTest : public support::WithCallbacks<support::CompareJobTest> {
 protected:
  bool Compare() { return SweepPartStockCompare(WorkDir(), &callbacks); }

  Files InJobNow() const { return support::FilesIn(InJob("")); }
  Files InKeepNow() const { return support::FilesIn(InKeep("")); }

  void RemoveFromJob(const std::string& name) { std::filesystem::remove(InJob(name)); }

  // The comparison ended before its result was created: nothing is left of it but the text.
  void ExpectEndedWithTheBands(const std::string& text) {
    EXPECT_EQ(InJobNow(), JobFilesWith(""));
    EXPECT_EQ(InKeepNow(), CopiesWith(text, false));
    EXPECT_THAT(kernel.CallNames(), ::testing::IsEmpty());
    EXPECT_THAT(host.OpenStreams(), ::testing::IsEmpty());
  }
};

}  // namespace compare_test

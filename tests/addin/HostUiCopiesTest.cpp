// The copying that the add-in's library exports for the host.

#include <gtest/gtest.h>

#include "platform/HostUi.h"

namespace {

TEST(HostUiCopies, DataTipCopiesAreTheirOwn) {
  const UIDataTip original("length 12", 1, 2);
  UIDataTip assigned("other", 0, 0);
  assigned = UIDataTip(original);
  EXPECT_STREQ(assigned.Text(), "length 12");
  assigned = UIDataTip("changed", 0, 0);
  EXPECT_STREQ(original.Text(), "length 12");
}

TEST(HostUiCopies, ErrorTipKeepsTextAndField) {
  const UIErrorTip original("too small", 7);
  const UIErrorTip copy(original);
  UIErrorTip assigned("", 0);
  assigned = original;
  EXPECT_STREQ(copy.Text(), "too small");
  EXPECT_EQ(copy.Field(), 7);
  EXPECT_STREQ(assigned.Text(), "too small");
  EXPECT_EQ(assigned.Field(), 7);
}

TEST(HostUiCopies, LongProcessKeepsItsStepsAndGoesOnAlone) {
  CLongProcess original(4);
  original.Advance(1);
  CLongProcess copy(original);
  CLongProcess assigned(1);
  assigned = original;
  original.Advance(2);
  EXPECT_EQ(copy.Percentage(), 25);
  EXPECT_EQ(assigned.Percentage(), 25);
}

}  // namespace

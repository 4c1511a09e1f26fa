#include <gtest/gtest.h>
#include <limits>

#include "formats/DecimalText.h"

namespace {

using formats::DecimalText;

TEST(DecimalText, HasSixDecimalsWhateverTheFiguresSize) {
  EXPECT_EQ(DecimalText(12.5), "12.500000");
  EXPECT_EQ(DecimalText(-0.25), "-0.250000");
  EXPECT_EQ(DecimalText(0.0000004), "0.000000");
  EXPECT_EQ(DecimalText(0.0000006), "0.000001");
  EXPECT_EQ(DecimalText(1e21), "1000000000000000000000.000000");
}

TEST(DecimalText, HoldsTheLongestDouble) {
  const std::string text = DecimalText(-std::numeric_limits<double>::max());
  EXPECT_EQ(text.size(), 317u);
  EXPECT_EQ(text.substr(0, 18), "-17976931348623157");
  EXPECT_EQ(text.substr(310), ".000000");
}

TEST(DecimalText, NamesWhatIsNoNumber) {
  EXPECT_EQ(DecimalText(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(DecimalText(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(DecimalText(std::numeric_limits<double>::quiet_NaN()), "nan");
}

}  // namespace

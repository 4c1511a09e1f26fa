// Windows always has locales with a decimal comma; other systems may have none.

#include <clocale>
#include <gtest/gtest.h>
#include <string>

#include "addin/status_messages.h"
#include "support/TestHost.h"

namespace {

TEST(PercentageLocale, DecimalsHaveAPointWhereTheHostsLocaleHasAComma) {
  support::TestHost host;
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, "German_Germany.1252"), nullptr);
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  ShowProgressPercent(1, 42.5);
  std::setlocale(LC_NUMERIC, before.c_str());
  ASSERT_EQ(host.events.Events().size(), 1u);
  EXPECT_EQ(host.events.Events().front(), "status \" 42.5%\"");
}

}  // namespace

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "addin/status_messages.h"
#include "support/FilledStatusMessages.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;

static_assert(sizeof(StatusMessageTable::texts) == 25 * 200);
static_assert(sizeof(StatusMessageTable::texts[0]) == 200);
static_assert(std::is_same_v<decltype(StatusMessageTable::count), short>);

std::string Status(const std::string& text) { return "status \"" + text + "\""; }

class StatusMessagesTest : public ::testing::Test {
 protected:
  // The one text that the status bar gets.
  std::string Percent(short number, double percent) {
    host.events.Clear();
    ShowProgressPercent(number, percent);
    EXPECT_EQ(host.events.Events().size(), 1u);
    return host.events.Events().at(0);
  }

  std::string Phase(const char* kernelText) {
    host.events.Clear();
    ShowPhaseMessage(24, kernelText);
    return host.events.Events().at(2);
  }

  support::TestHost host;
};

TEST_F(StatusMessagesTest, TableIsEmpty) { EXPECT_EQ(StatusMessages().count, 0); }

TEST_F(StatusMessagesTest, WithoutTheMessageOnlyPromptAndTextAreCleared) {
  ShowStatusMessage(3);
  EXPECT_THAT(host.events.Events(), ElementsAre("clearprompt", "cleartext"));
}

TEST_F(StatusMessagesTest, MessageIsShownBehindTheClearing) {
  const support::FilledStatusMessages texts;
  ShowStatusMessage(3);
  EXPECT_THAT(host.events.Events(), ElementsAre("clearprompt", "cleartext", Status("<3>")));
}

TEST_F(StatusMessagesTest, LastMessageOfTheTableIsShownAndTheNextIsNot) {
  const support::FilledStatusMessages texts(10);
  ShowStatusMessage(10);
  ShowStatusMessage(11);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("clearprompt", "cleartext", Status("<10>"), "clearprompt", "cleartext"));
}

TEST_F(StatusMessagesTest, TableHoldsTwentyFive) {
  const support::FilledStatusMessages texts(25);
  ShowStatusMessage(25);
  ShowStatusMessage(26);
  EXPECT_THAT(host.events.Only({"status"}), ElementsAre(Status("<25>")));
}

TEST_F(StatusMessagesTest, CountIsComparedWithItsSign) {
  const support::FilledStatusMessages texts;
  StatusMessages().count = -1;
  ShowStatusMessage(1);
  EXPECT_THAT(host.events.Events(), ElementsAre("clearprompt", "cleartext"));
  EXPECT_EQ(Percent(1, 42.0), Status(" 42.0%"));
}

TEST_F(StatusMessagesTest, EmptyMessageIsShownAsSuch) {
  support::FilledStatusMessages texts;
  texts.Set(3, "");
  ShowStatusMessage(3);
  EXPECT_THAT(host.events.Only({"status"}), ElementsAre(Status("")));
}

TEST_F(StatusMessagesTest, PercentageStandsAloneWithoutTheMessageAndNothingIsCleared) {
  ShowProgressPercent(5, 42.0);
  EXPECT_THAT(host.events.Events(), ElementsAre(Status(" 42.0%")));
}

TEST_F(StatusMessagesTest, PercentageFollowsTheMessageAndNothingIsCleared) {
  const support::FilledStatusMessages texts(5);
  ShowProgressPercent(5, 42.0);
  ShowProgressPercent(6, 42.0);
  EXPECT_THAT(host.events.Events(), ElementsAre(Status("<5> 42.0%"), Status(" 42.0%")));
}

TEST_F(StatusMessagesTest, PercentageHasFiveColumnsAndOneDecimal) {
  const std::vector<std::pair<double, std::string>> spellings = {
      {0.0, "  0.0%"},  {1.0, "  1.0%"},   {9.94, "  9.9%"},   {9.96, " 10.0%"},
      {99.9, " 99.9%"}, {99.96, "100.0%"}, {100.0, "100.0%"},  {-3.0, " -3.0%"},
      {0.25, "  0.2%"}, {0.75, "  0.8%"},  {1234.5, "1234.5%"}};
  for (const auto& [percent, text] : spellings) {
    EXPECT_EQ(Percent(1, percent), Status(text)) << percent;
  }
}

TEST_F(StatusMessagesTest, PercentageIsCutTo49Characters) {
  // A power of two, so that its digits are known: 2^200 has 61.
  EXPECT_EQ(Percent(1, 1606938044258990275541962092341162602522202993782792835301376.0),
            Status("1606938044258990275541962092341162602522202993782"));
}

TEST_F(StatusMessagesTest, LineIsCutTo199Characters) {
  support::FilledStatusMessages texts;
  texts.Set(1, std::string(193, 'x'));
  EXPECT_EQ(Percent(1, 42.0), Status(std::string(193, 'x') + " 42.0%"));
  texts.Set(1, std::string(194, 'x'));
  EXPECT_EQ(Percent(1, 42.0), Status(std::string(194, 'x') + " 42.0"));
  texts.Set(1, std::string(199, 'x'));
  EXPECT_EQ(Percent(1, 42.0), Status(std::string(199, 'x')));
}

TEST_F(StatusMessagesTest, PhaseLineIsCutTo199Characters) {
  support::FilledStatusMessages texts;
  texts.Set(24, std::string(198, 'x'));
  EXPECT_EQ(Phase("Offsetting (phase 2)... 17"), Status(std::string(198, 'x') + "1"));
}

TEST_F(StatusMessagesTest, PercentSignsOfAMessageAreText) {
  support::FilledStatusMessages texts;
  texts.Set(1, "100%s %n");
  texts.Set(24, "100%s %n");
  ShowStatusMessage(1);
  EXPECT_EQ(host.events.Events().back(), Status("100%s %n"));
  EXPECT_EQ(Percent(1, 42.0), Status("100%s %n 42.0%"));
  EXPECT_EQ(Phase("Offsetting (phase 2)... 17"), Status("100%s %n17"));
}

TEST_F(StatusMessagesTest, PhaseMessageClearsShowsTheMessageAndTheCounter) {
  const support::FilledStatusMessages texts;
  ShowPhaseMessage(24, "Offsetting (phase 2)... 17");
  EXPECT_THAT(host.events.Events(), ElementsAre("clearprompt", "cleartext", Status("<24>17")));
}

TEST_F(StatusMessagesTest, WithoutThePhaseMessageItsTextIsNotLookedAt) {
  const support::FilledStatusMessages texts(23);
  // Whoever looked would not survive it.
  ShowPhaseMessage(24, nullptr);
  EXPECT_THAT(host.events.Events(), ElementsAre("clearprompt", "cleartext"));
}

TEST_F(StatusMessagesTest, CounterIsReadBehindTheTextOfItsPhase) {
  const support::FilledStatusMessages texts;
  const std::vector<std::pair<const char*, const char*>> counters = {
      {"Offsetting (phase 2)... 17", "17"},
      {"Offsetting (phase 3)... 4", "4"},
      {"Offsetting (phase 2)... -5", "-5"},
      {"Offsetting (phase 2)... 17 of 20", "17"},
      {"Offsetting (phase 2)...17", "17"},     // a blank of the pattern may be missing
      {"Offsetting (phase 2)...   17", "17"},  // or be several
      {"Offsetting (phase 2)... 2147483647", "2147483647"},
      {"Offsetting (phase 2)... ", "-2"},  // no number
      {"Offsetting (phase 3)... x", "-3"},
      {"Offsetting (phase 2), 17", "-2"},  // not the pattern
      {"offsetting (phase 3)... 17", "-3"},
      {"Offsetting (phase 2)... 2147483648", "-2"},  // no int
      {"Offsetting (phase 4)... 17", "-1"},          // another character 18
      {"Offsetting", "-1"},                          // none
      {"Offsetting (phase ", "-1"},
      {"Offsetting (phase 2", "-2"},
      {"", "-1"}};
  for (const auto& [text, counter] : counters) {
    EXPECT_EQ(Phase(text), Status(std::string("<24>") + counter)) << text;
  }
}

}  // namespace

#include "formats/programs/GCodeMeaning.h"

#include <algorithm>
#include <array>

namespace formats {
namespace {

struct Entry {
  int tenths;
  GCodeGroup group;
  GCodeSupport support = GCodeSupport::kYes;
};

constexpr std::array kCodes = {
    Entry{0, GCodeGroup::kMotion},
    Entry{10, GCodeGroup::kMotion},
    Entry{20, GCodeGroup::kMotion},
    Entry{30, GCodeGroup::kMotion},
    Entry{40, GCodeGroup::kOneLine},
    Entry{50, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{51, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{52, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{53, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{100, GCodeGroup::kOneLine},
    Entry{170, GCodeGroup::kPlane},
    Entry{171, GCodeGroup::kPlane, GCodeSupport::kNo},
    Entry{180, GCodeGroup::kPlane},
    Entry{181, GCodeGroup::kPlane, GCodeSupport::kNo},
    Entry{190, GCodeGroup::kPlane},
    Entry{191, GCodeGroup::kPlane, GCodeSupport::kNo},
    Entry{200, GCodeGroup::kUnits},
    Entry{210, GCodeGroup::kUnits},
    Entry{280, GCodeGroup::kOneLine},
    Entry{281, GCodeGroup::kOneLine},
    Entry{300, GCodeGroup::kOneLine},
    Entry{301, GCodeGroup::kOneLine},
    Entry{330, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{331, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{382, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{383, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{384, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{385, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{400, GCodeGroup::kCutterSide},
    Entry{410, GCodeGroup::kCutterSide, GCodeSupport::kNo},
    Entry{411, GCodeGroup::kCutterSide, GCodeSupport::kNo},
    Entry{420, GCodeGroup::kCutterSide, GCodeSupport::kNo},
    Entry{421, GCodeGroup::kCutterSide, GCodeSupport::kNo},
    Entry{430, GCodeGroup::kToolLength},
    Entry{431, GCodeGroup::kToolLength, GCodeSupport::kNo},
    Entry{432, GCodeGroup::kToolLength, GCodeSupport::kNo},
    Entry{490, GCodeGroup::kToolLength},
    Entry{530, GCodeGroup::kMachineCoordinates},
    Entry{540, GCodeGroup::kCoordinateSystem},
    Entry{550, GCodeGroup::kCoordinateSystem},
    Entry{560, GCodeGroup::kCoordinateSystem},
    Entry{570, GCodeGroup::kCoordinateSystem},
    Entry{580, GCodeGroup::kCoordinateSystem},
    Entry{590, GCodeGroup::kCoordinateSystem},
    Entry{591, GCodeGroup::kCoordinateSystem},
    Entry{592, GCodeGroup::kCoordinateSystem},
    Entry{593, GCodeGroup::kCoordinateSystem},
    Entry{610, GCodeGroup::kPathControl},
    Entry{611, GCodeGroup::kPathControl},
    Entry{640, GCodeGroup::kPathControl},
    Entry{730, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{740, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{760, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{800, GCodeGroup::kMotion},
    Entry{810, GCodeGroup::kMotion},
    Entry{820, GCodeGroup::kMotion},
    Entry{830, GCodeGroup::kMotion},
    Entry{840, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{850, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{860, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{870, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{880, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{890, GCodeGroup::kMotion, GCodeSupport::kMotion},
    Entry{900, GCodeGroup::kDistance},
    Entry{901, GCodeGroup::kArcDistance},
    Entry{910, GCodeGroup::kDistance},
    Entry{911, GCodeGroup::kArcDistance},
    Entry{920, GCodeGroup::kOneLine},
    Entry{921, GCodeGroup::kOneLine},
    Entry{922, GCodeGroup::kOneLine},
    Entry{923, GCodeGroup::kOneLine},
    Entry{930, GCodeGroup::kFeedMode},
    Entry{940, GCodeGroup::kFeedMode},
    Entry{950, GCodeGroup::kFeedMode},
    Entry{980, GCodeGroup::kRetract},
    Entry{990, GCodeGroup::kRetract},
};

// Program end and stops, spindle, tool change, coolant, overrides.
constexpr std::array kMiscellaneous = {0,   10,  20,  30,  40,  50,  60,  70,  80,  90,
                                       190, 300, 480, 490, 500, 510, 520, 530, 600, 610};

}  // namespace

GCodeMeaning MeaningOfG(int tenths) {
  const auto found =
      std::lower_bound(kCodes.begin(), kCodes.end(), tenths,
                       [](const Entry& entry, int wanted) { return entry.tenths < wanted; });
  if (found == kCodes.end() || found->tenths != tenths) {
    return {GCodeGroup::kOneLine, GCodeSupport::kNo};
  }
  return {found->group, found->support};
}

bool UnderstandsM(int tenths) {
  return std::binary_search(kMiscellaneous.begin(), kMiscellaneous.end(), tenths);
}

std::string GCodeName(char letter, int tenths) {
  std::string name = letter + std::to_string(tenths / 10);
  if (tenths % 10 != 0) {
    name += "." + std::to_string(tenths % 10);
  }
  return name;
}

}  // namespace formats

#pragma once

#include <string>
#include <vector>

#include "formats/programs/GCodeReport.h"

namespace formats {

// What an APT program did, and what it says to people.
struct AptReport : GCodeReport {
  struct Note {
    std::int64_t line = 0;
    std::string text;  // cut off at kLongestNote bytes
  };
  static constexpr std::size_t kMostNotes = 1000;
  static constexpr std::size_t kLongestNote = 200;

  std::vector<Note> inserts;  // the INSERT statements, at most kMostNotes of them
  std::int64_t insertCount = 0;
};

}  // namespace formats

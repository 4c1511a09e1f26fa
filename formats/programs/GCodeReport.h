#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "formats/programs/GCodeMoves.h"

namespace formats {

// What a program did. Lengths in the units of the positions.
struct GCodeReport {
  std::int64_t lines = 0;
  std::int64_t deletedLines = 0;  // left out because of "/"
  std::int64_t toolLoads = 0;
  std::int64_t rapids = 0;       // straight moves
  std::int64_t feeds = 0;        // straight moves
  std::int64_t arcs = 0;         // full circles and helices too
  std::int64_t chords = 0;       // of all arcs
  std::int64_t holes = 0;        // of canned cycles; their moves count as rapids and feeds
  std::int64_t beforeStart = 0;  // moves that end where the position is not fully given
  std::int64_t withoutTool = 0;  // rapids before the first tool
  double rapidLength = 0;
  double feedLength = 0;
  ToolTip low = {kNone, kNone, kNone};      // the box of all positions;
  ToolTip high = {-kNone, -kNone, -kNone};  // low is above high when there is none

  // A word that was not understood, and where it stands. The list of lines ends at kMostLines.
  struct Unknown {
    static constexpr std::size_t kMostLines = 1000;
    std::string word;
    std::int64_t count = 0;
    std::vector<std::int64_t> lines;
  };
  std::vector<Unknown> unknown;  // in the order of first appearance

  void AddUnknown(const std::string& word, std::int64_t line);
  void AddPosition(const ToolTip& tip);

 private:
  static constexpr double kNone = std::numeric_limits<double>::infinity();
  std::map<std::string, std::size_t> unknownIndex_;
};

// "7, 9, 12 and 40 more"
std::string UnknownLines(const GCodeReport::Unknown& unknown, std::size_t most);

}  // namespace formats

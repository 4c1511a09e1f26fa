#include "formats/programs/GCodeReport.h"

#include <algorithm>

namespace formats {

void GCodeReport::AddUnknown(const std::string& word, std::int64_t line) {
  const auto [entry, isNew] = unknownIndex_.try_emplace(word, unknown.size());
  if (isNew) {
    unknown.push_back({word, 0, {}});
  }
  Unknown& found = unknown[entry->second];
  ++found.count;
  if (found.lines.size() < Unknown::kMostLines) {
    found.lines.push_back(line);
  }
}

void GCodeReport::AddPosition(const ToolTip& tip) {
  for (std::size_t axis = 0; axis < tip.size(); ++axis) {
    low[axis] = std::min(low[axis], tip[axis]);
    high[axis] = std::max(high[axis], tip[axis]);
  }
}

std::string UnknownLines(const GCodeReport::Unknown& unknown, std::size_t most) {
  std::string text;
  const std::size_t shown = std::min(most, unknown.lines.size());
  for (std::size_t i = 0; i < shown; ++i) {
    text += (i == 0 ? "" : ", ") + std::to_string(unknown.lines[i]);
  }
  const auto rest = unknown.count - static_cast<std::int64_t>(shown);
  if (rest > 0) {
    text += " and " + std::to_string(rest) + " more";
  }
  return text;
}

}  // namespace formats

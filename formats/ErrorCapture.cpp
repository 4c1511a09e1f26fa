#include "formats/ErrorCapture.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "formats/OpenFile.h"

namespace formats {
namespace {

// The line that opens an entry of either kind.
std::optional<CapturedMessage> EntryOpenedBy(std::string_view line) {
  if (line == "Error Message Received:") return CapturedMessage{.fatal = true, .text = {}};
  if (line == "Warning Message Received:") return CapturedMessage{.fatal = false, .text = {}};
  return std::nullopt;
}

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    if (lines.back().ends_with('\r')) lines.back().remove_suffix(1);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

}  // namespace

std::vector<CapturedMessage> ReadErrorCapture(const std::string& path) {
  const std::string content = ReadWholeFile(path);
  const std::vector<std::string_view> lines = Lines(content);
  std::vector<CapturedMessage> entries;
  bool first = true;  // the next line is the first of its entry's text
  for (std::size_t i = 0; i < lines.size(); ++i) {
    // The empty line ahead of an entry belongs to it, not to the text before.
    if (lines[i].empty() && i + 1 < lines.size()) {
      if (auto entry = EntryOpenedBy(lines[i + 1])) {
        entries.push_back(std::move(*entry));
        first = true;
        ++i;
        continue;
      }
    }
    if (entries.empty()) continue;
    std::string& text = entries.back().text;
    if (!first) text += '\n';
    text += lines[i];
    first = false;
  }
  return entries;
}

}  // namespace formats

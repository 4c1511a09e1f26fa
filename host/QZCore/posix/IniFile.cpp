#include "host/QZCore/posix/IniFile.h"

#include <istream>

namespace {

std::string Trimmed(const std::string& text) {
  constexpr const char* kBlanks = " \t\r";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return std::string();
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

std::string FoldCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

std::optional<IniSection> ReadIniSection(std::istream& file, const std::string& name) {
  const std::string wanted = FoldCase("[" + name + "]");
  std::optional<IniSection> section;
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    line = Trimmed(line);
    if (line.empty() || line.front() == ';' || line.front() == '#') continue;
    if (line.front() == '[') {
      inside = FoldCase(line) == wanted;
      if (inside && !section.has_value()) section.emplace();
      continue;
    }
    const size_t equals = line.find('=');
    if (!inside || equals == std::string::npos) continue;
    (*section)[FoldCase(Trimmed(line.substr(0, equals)))] = Trimmed(line.substr(equals + 1));
  }
  return section;
}

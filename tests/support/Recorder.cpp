#include "support/Recorder.h"

#include <algorithm>

namespace support {
namespace {

std::string WithBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace

void Recorder::Note(std::string event) { m_events.push_back(std::move(event)); }

void Recorder::Alias(const std::string& directory, const std::string& label) {
  std::string spelled = WithBackslashes(directory);
  while (spelled.ends_with('\\')) spelled.pop_back();
  m_aliases.emplace_back(spelled, label);
  std::sort(m_aliases.begin(), m_aliases.end(),
            [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });
}

std::string Recorder::Spell(const std::string& path) const {
  const std::string spelled = WithBackslashes(path);
  for (const auto& [directory, label] : m_aliases) {
    if (!spelled.starts_with(directory)) continue;
    const std::string rest = spelled.substr(directory.size());
    if (rest.empty() || rest.front() == '\\') return label + rest;
  }
  return spelled;
}

std::vector<std::string> Recorder::Only(const std::vector<std::string>& beginnings) const {
  std::vector<std::string> chosen;
  for (const std::string& event : m_events) {
    const bool wanted = std::any_of(beginnings.begin(), beginnings.end(),
                                    [&](const auto& word) { return event.starts_with(word); });
    if (wanted) chosen.push_back(event);
  }
  return chosen;
}

}  // namespace support

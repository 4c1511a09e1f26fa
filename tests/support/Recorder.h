#pragma once

#include <string>
#include <utility>
#include <vector>

namespace support {

/// The one sequence of everything that a host or the system could observe: host services, plain
/// library and system calls, kernel calls and progress notifications, in the order they came.
class Recorder {
 public:
  void Note(std::string event);

  /// From now on `directory` (either separator, with or without a trailing one) is written as
  /// `label` in the events. The longest directory that fits a path wins.
  void Alias(const std::string& directory, const std::string& label);

  /// The path as events spell it: backslashes, aliases in place of their directories.
  std::string Spell(const std::string& path) const;

  const std::vector<std::string>& Events() const { return m_events; }
  void Clear() { m_events.clear(); }

  /// The events that begin with one of the given words, in order.
  std::vector<std::string> Only(const std::vector<std::string>& beginnings) const;

 private:
  std::vector<std::string> m_events;
  std::vector<std::pair<std::string, std::string>> m_aliases;
};

}  // namespace support

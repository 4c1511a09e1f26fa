#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "host/qzhost/Options.h"

namespace host {

/// What a subcommand has to say at its end: for people a list of lines on standard output, with
/// --json one object there instead. Always begins with the units.
class Report {
 public:
  explicit Report(const Options& options);

  /// A line `label` with the value as text, and a member `key`. An empty label keeps the value out
  /// of the text; an empty `text` shows the value as JSON spells it.
  void Add(const std::string& key, nlohmann::ordered_json value, const std::string& label = "",
           const std::string& text = "");

  /// A line of text that has no member of its own.
  void AddLine(const std::string& line);

  const nlohmann::ordered_json& Object() const { return m_object; }
  std::string Text() const;

  /// To standard output, in the form that the options ask for. Throws CommandError when it cannot
  /// be written whole.
  void Print() const;

 private:
  bool m_json;
  nlohmann::ordered_json m_object;
  std::vector<std::pair<std::string, std::string>> m_lines;
};

/// The object as it is printed: texts in UTF-8, a character that cannot be told replaced.
std::string JsonText(nlohmann::ordered_json object);

/// A number as text with the given count of decimals, whatever the locale.
std::string Fixed(double value, int decimals);

}  // namespace host

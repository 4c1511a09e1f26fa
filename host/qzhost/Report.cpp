#include "host/qzhost/Report.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"

namespace host {

namespace {

void TextsToUtf8(nlohmann::ordered_json& value) {
  if (value.is_string()) {
    value = Utf8(value.get_ref<const std::string&>());
  } else if (value.is_structured()) {
    for (auto& element : value) TextsToUtf8(element);
  }
}

}  // namespace

Report::Report(const Options& options) : m_json(options.json) {
  Add("units", UnitsName(options.units), "units", UnitsName(options.units));
}

void Report::Add(const std::string& key, nlohmann::ordered_json value, const std::string& label,
                 const std::string& text) {
  if (!label.empty()) m_lines.emplace_back(label, text.empty() ? value.dump() : text);
  m_object[key] = std::move(value);
}

void Report::AddLine(const std::string& line) { m_lines.emplace_back("", line); }

std::string Report::Text() const {
  size_t width = 0;
  for (const auto& [label, text] : m_lines) width = std::max(width, label.size());
  std::string result;
  for (const auto& [label, text] : m_lines) {
    if (!label.empty()) result += label + std::string(width + 2 - label.size(), ' ');
    result += text + "\n";
  }
  return result;
}

void Report::Print() const {
  const std::string text = m_json ? JsonText(m_object) : Text();
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (std::fflush(stdout) != 0 || !whole) {
    throw CommandError("standard output cannot be written", kFailed);
  }
}

std::string JsonText(nlohmann::ordered_json object) {
  TextsToUtf8(object);
  // Paths come in whatever encoding the system has; a byte that is not UTF-8 must not end the run.
  const auto kReplace = nlohmann::ordered_json::error_handler_t::replace;
  return object.dump(2, ' ', false, kReplace) + "\n";
}

std::string Fixed(double value, int decimals) {
  char text[400];
  return {text,
          std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr};
}

}  // namespace host

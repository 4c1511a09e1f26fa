#include "formats/meshes/TextScanner.h"

#include <algorithm>
#include <charconv>

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace formats {
namespace {

constexpr std::string_view blanks = " \t\r\v\f";

// The whole word as a T; a leading plus sign is accepted.
template <typename T>
std::optional<T> Parsed(std::string_view word) {
  if (word.starts_with('+')) word.remove_prefix(1);
  T value{};
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value);
  if (stop != end || error != std::errc()) return std::nullopt;
  return value;
}

std::string Quoted(std::string_view word) {
  constexpr std::size_t most = 40;
  std::string text(word.substr(0, most));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c < ' ' || c == 127; }, '?');
  return '"' + text + (word.size() > most ? "...\"" : "\"");
}

}  // namespace

TextScanner::TextScanner(const std::string& path, char comment)
    : path_(path), content_(ReadWholeFile(path)), comment_(comment), rest_(content_) {}

bool TextScanner::NextLine() {
  while (!rest_.empty()) {
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    ++lineNumber_;
    if (comment_ != 0) line_ = line_.substr(0, line_.find(comment_));
    if (line_.find_first_not_of(blanks) != std::string_view::npos) return true;
  }
  line_ = {};
  return false;
}

std::optional<std::string_view> TextScanner::Word() {
  const std::size_t begin = line_.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return std::nullopt;
  line_.remove_prefix(begin);
  const std::string_view word = line_.substr(0, line_.find_first_of(blanks));
  line_.remove_prefix(word.size());
  return word;
}

std::string_view TextScanner::WordOnAnyLine(std::string_view what) {
  for (;;) {
    if (const auto word = Word()) return *word;
    if (!NextLine()) Fail("the file ends where " + std::string(what) + " should stand");
  }
}

double TextScanner::Number(std::string_view what) {
  const auto word = Word();
  if (!word) Fail("the line ends where " + std::string(what) + " should stand");
  return ToNumber(*word, what);
}

std::int64_t TextScanner::Integer(std::string_view what) {
  const auto word = Word();
  if (!word) Fail("the line ends where " + std::string(what) + " should stand");
  return ToInteger(*word, what);
}

double TextScanner::ToNumber(std::string_view word, std::string_view what) const {
  const auto value = Parsed<double>(word);
  if (!value) Fail(Quoted(word) + " is no number for " + std::string(what));
  return *value;
}

std::int64_t TextScanner::ToInteger(std::string_view word, std::string_view what) const {
  const auto value = Parsed<std::int64_t>(word);
  if (!value) Fail(Quoted(word) + " is no whole number for " + std::string(what));
  return *value;
}

void TextScanner::Fail(const std::string& reason) const {
  throw FileError(path_ + ": " + reason + " (line " + std::to_string(lineNumber_) + ")");
}

}  // namespace formats

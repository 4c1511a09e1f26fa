#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace formats {

// A text file taken apart into lines and words, with the line number for messages. Words are
// divided by blanks and tabs; either system's line ends are understood. Numbers do not hang on the
// locale.
class TextScanner {
 public:
  // What follows `comment` on a line is not looked at; 0 for formats without comments.
  explicit TextScanner(const std::string& path, char comment = 0);
  TextScanner(const TextScanner&) = delete;
  TextScanner& operator=(const TextScanner&) = delete;

  // Goes to the next line that has a word; false at the end of the file.
  bool NextLine();

  // The next word of the current line, or none at its end. Valid as long as the scanner.
  std::optional<std::string_view> Word();

  // The next word, on whichever line it stands. `what` is for the message when there is none.
  std::string_view WordOnAnyLine(std::string_view what);

  // The next word of the current line as a number.
  double Number(std::string_view what);
  std::int64_t Integer(std::string_view what);

  double ToNumber(std::string_view word, std::string_view what) const;
  std::int64_t ToInteger(std::string_view word, std::string_view what) const;

  // Drops what is left of the current line.
  void SkipLine() { line_ = {}; }

  // Bytes behind the current line; no list in the file can have more entries than that.
  std::uint64_t BytesLeft() const { return rest_.size(); }

  std::uint64_t LineNumber() const { return lineNumber_; }  // of the current line, from 1

  [[noreturn]] void Fail(const std::string& reason) const;

 private:
  std::string path_;
  std::string content_;
  char comment_;
  std::string_view rest_;
  std::string_view line_;
  std::uint64_t lineNumber_ = 0;
};

}  // namespace formats

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/programs/GCodeError.h"

namespace formats {

// A line without spaces and comments, in lower case, and where each character stood.
struct GCodeText {
  std::string characters;
  std::vector<int> columns;  // one a character, counted from 1
  bool deleted = false;      // the line begins with "/"
};

// A place in such a line.
class GCodeCursor {
 public:
  explicit GCodeCursor(const GCodeText& text) : text_(text) {}

  bool AtEnd() const { return at_ == text_.characters.size(); }
  char Peek() const { return AtEnd() ? '\0' : text_.characters[at_]; }
  char Take() { return text_.characters[at_++]; }

  bool TakeIf(char character) {
    if (Peek() != character) {
      return false;
    }
    ++at_;
    return true;
  }

  bool TakeIf(std::string_view word) {
    if (!Rest().starts_with(word)) {
      return false;
    }
    at_ += word.size();
    return true;
  }

  void Expect(char character, const std::string& after) {
    if (!TakeIf(character)) {
      Fail(std::string("\"") + character + "\" expected after " + after);
    }
  }

  std::string_view Rest() const { return std::string_view(text_.characters).substr(at_); }
  void Skip(std::size_t characters) { at_ += characters; }

  int Column() const {
    if (!AtEnd()) {
      return text_.columns[at_];
    }
    return text_.columns.empty() ? 1 : text_.columns.back() + 1;
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw GCodeError(reason, Column()); }

 private:
  const GCodeText& text_;
  std::size_t at_ = 0;
};

}  // namespace formats

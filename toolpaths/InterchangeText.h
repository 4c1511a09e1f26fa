#pragma once

#include <cstdint>
#include <string_view>

#include "blocks/BlockWriter.h"

/// Writes the lines of the interchange file's text form: a value, then " //" and a comment. Each
/// returns false when the stream does not take what is written.
class InterchangeText {
 public:
  /// `stream` is open for writing text, stays the caller's and must outlive this object.
  explicit InterchangeText(FILE* stream) : m_out(stream) {}

  bool Text(std::string_view value, std::string_view comment);
  bool Integer(std::int32_t value, std::string_view comment);
  bool Number(double value, std::string_view comment);
  bool Flag(bool value, std::string_view comment);
  /// `xyz`: three doubles, on one line.
  bool Triple(const double* xyz, std::string_view comment);

  bool Flush() { return m_out.Flush(); }

 private:
  char* Room();
  bool Finish(char* end, std::string_view comment);

  BlockWriter m_out;
  char* m_line = nullptr;
};

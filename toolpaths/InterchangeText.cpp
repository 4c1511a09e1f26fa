#include "toolpaths/InterchangeText.h"

#include <cstring>

#include "toolpaths/FormatNumber.h"

namespace {

// Three numbers at their widest and the longest comment.
constexpr std::size_t kLongestLine = 3 * (kMostNumberCharacters + 1) + 128;

char* Put(std::string_view text, char* to) {
  std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

}  // namespace

char* InterchangeText::Room() {
  m_line = reinterpret_cast<char*>(m_out.Room(kLongestLine));
  return m_line;
}

bool InterchangeText::Finish(char* end, std::string_view comment) {
  end = Put(comment, Put(" //", end));
  *end++ = '\n';
  m_out.Advance(static_cast<std::size_t>(end - m_line));
  return true;
}

bool InterchangeText::Text(std::string_view value, std::string_view comment) {
  char* line = Room();
  return line != nullptr && Finish(Put(value, line), comment);
}

bool InterchangeText::Integer(std::int32_t value, std::string_view comment) {
  char* line = Room();
  return line != nullptr && Finish(FormatNumber(value, line), comment);
}

bool InterchangeText::Number(double value, std::string_view comment) {
  char* line = Room();
  return line != nullptr && Finish(FormatNumber(value, line), comment);
}

bool InterchangeText::Flag(bool value, std::string_view comment) {
  return Text(value ? "true" : "false", comment);
}

bool InterchangeText::Triple(const double* xyz, std::string_view comment) {
  char* line = Room();
  if (line == nullptr) return false;
  char* end = FormatNumber(xyz[0], line);
  *end++ = ' ';
  end = FormatNumber(xyz[1], end);
  *end++ = ' ';
  return Finish(FormatNumber(xyz[2], end), comment);
}

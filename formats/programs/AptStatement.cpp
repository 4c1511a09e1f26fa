#include "formats/programs/AptStatement.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

// The first six letters say what a statement is; the text may follow them without a slash.
constexpr std::array<std::string_view, 7> kTextMajors = {"INSERT", "PARTNO", "PPRINT", "REMARK",
                                                         "DISPLY", "LETTER", "TITLES"};

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string CapitalsWithoutBlanks(std::string_view text) {
  std::string packed;
  for (const char c : text) {
    if (kBlanks.find(c) == std::string_view::npos) {
      packed += Upper(c);
    }
  }
  return packed;
}

std::string_view Trim(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool BeginsLikeNumber(const std::string& word) {
  const std::size_t first = word.find_first_not_of("+-.");
  return first != std::string::npos && word[first] >= '0' && word[first] <= '9';
}

// Old processors write the exponent with a D.
double ReadNumber(const std::string& word) {
  std::string digits = word.substr(word.front() == '+' ? 1 : 0);
  std::replace(digits.begin(), digits.end(), 'D', 'E');
  double number = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number)) {
    throw GCodeError(word.substr(0, 40) + " is no number", 0);
  }
  return number;
}

AptWord ReadWord(std::string_view piece) {
  AptWord word;
  word.text = CapitalsWithoutBlanks(piece);
  if (BeginsLikeNumber(word.text)) {
    word.number = ReadNumber(word.text);
    word.isNumber = true;
    word.text.clear();
  }
  return word;
}

bool ReadText(std::string_view text, AptStatement& statement) {
  const std::string_view trimmed = Trim(text);
  const std::string major = CapitalsWithoutBlanks(trimmed.substr(0, kTextMajors[0].size()));
  if (!IsAptText(major)) {
    return false;
  }
  statement.major = major;
  std::string_view rest = Trim(trimmed.substr(major.size()));
  if (rest.starts_with('/')) {
    rest = Trim(rest.substr(1));
  }
  statement.text = rest;
  return true;
}

}  // namespace

bool IsAptText(std::string_view major) {
  return std::find(kTextMajors.begin(), kTextMajors.end(), major) != kTextMajors.end();
}

std::string_view StripAptLine(std::string_view line, bool* continues) {
  *continues = false;
  AptStatement ignored;
  // Text for people may hold any character.
  if (ReadText(line, ignored)) {
    return Trim(line);
  }
  line = Trim(line.substr(0, line.find("$$")));
  if (line.ends_with('$')) {
    *continues = true;
    line.remove_suffix(1);
  }
  return line;
}

AptStatement ParseAptStatement(std::string_view text) {
  AptStatement statement;
  if (ReadText(text, statement)) {
    return statement;
  }
  const std::size_t slash = text.find('/');
  statement.major = CapitalsWithoutBlanks(text.substr(0, slash));
  if (slash == std::string_view::npos) {
    return statement;
  }
  std::string_view rest = Trim(text.substr(slash + 1));
  while (!rest.empty()) {
    const std::size_t comma = rest.find(',');
    statement.words.push_back(ReadWord(rest.substr(0, comma)));
    if (comma == std::string_view::npos) {
      break;
    }
    rest.remove_prefix(comma + 1);
  }
  return statement;
}

std::vector<double> NumbersOf(const AptStatement& statement) {
  std::vector<double> numbers;
  for (const AptWord& word : statement.words) {
    if (!word.isNumber) {
      throw GCodeError(statement.major + " takes numbers only", 0);
    }
    numbers.push_back(word.number);
  }
  return numbers;
}

}  // namespace formats

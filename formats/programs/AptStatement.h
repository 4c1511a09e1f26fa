#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace formats {

// One piece between commas: a number, or a word in capitals.
struct AptWord {
  bool isNumber = false;
  double number = 0;
  std::string text;  // empty for a number
};

// "MAJOR/word,word,..." without blanks.
struct AptStatement {
  std::string major;  // in capitals; all of the statement when it has no slash
  std::vector<AptWord> words;
  std::string text;  // behind the slash as it stands, of statements for people only
};

// True for statements whose rest is text for people: INSERT, PARTNO, PPRINT, REMARK and the like.
bool IsAptText(std::string_view major);

// Without comment ("$$" and what follows) and blanks at its end. `continues`: the line ends in "$",
// which is taken off, and the statement goes on in the next one.
std::string_view StripAptLine(std::string_view line, bool* continues);

// Throws GCodeError (column 0) for a number that is none.
AptStatement ParseAptStatement(std::string_view text);

// The words that are numbers, in order. Throws GCodeError when there is any other.
std::vector<double> NumbersOf(const AptStatement& statement);

}  // namespace formats

#include "formats/programs/GCodeLine.h"

#include <cmath>

#include "formats/programs/GCodeExpression.h"

namespace formats {
namespace {

bool IsSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

char Lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

char Upper(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

// The column after the comment that opens at `at`.
std::size_t SkipComment(std::string_view line, std::size_t at) {
  const std::size_t end = line.find_first_of("()", at + 1);
  if (end == std::string_view::npos) {
    throw GCodeError("comment without \")\"", static_cast<int>(at + 1));
  }
  if (line[end] == '(') {
    throw GCodeError("\"(\" within a comment", static_cast<int>(end + 1));
  }
  return end;
}

void ReadSetting(GCodeCursor& cursor, const GCodeVariables& variables, GCodeBlock& block) {
  const GCodeCursor at = cursor;
  cursor.Take();
  if (cursor.Peek() == '<') {
    std::string name(ReadGCodeName(cursor));
    cursor.Expect('=', "the variable");
    block.namedSettings.push_back({std::move(name), ReadGCodeValue(cursor, variables)});
    return;
  }
  const int number = ReadGCodeVariableNumber(cursor, variables);
  if (GCodeVariables::IsReadOnly(number)) {
    at.Fail("variable #" + std::to_string(number) + " can only be read");
  }
  cursor.Expect('=', "the variable");
  block.numberedSettings.push_back({number, ReadGCodeValue(cursor, variables)});
}

void ReadCode(GCodeCursor& cursor, const GCodeVariables& variables, int column,
              std::vector<GCodeCode>& codes) {
  constexpr double kNear = 0.0001;
  constexpr double kLargest = 10000;
  const double value = ReadGCodeValue(cursor, variables) * 10;
  const double tenths = std::round(value);
  if (std::abs(value - tenths) > kNear * 10 || tenths < 0 || tenths > kLargest) {
    throw GCodeError("no such G or M number", column);
  }
  codes.push_back({static_cast<int>(tenths), column});
}

void ReadWord(GCodeCursor& cursor, const GCodeVariables& variables, GCodeBlock& block) {
  const int column = cursor.Column();
  const char letter = cursor.Take();
  if (letter == 'g') {
    ReadCode(cursor, variables, column, block.gCodes);
    return;
  }
  if (letter == 'm') {
    ReadCode(cursor, variables, column, block.mCodes);
    return;
  }
  if (block.Has(letter)) {
    throw GCodeError(std::string("more than one ") + Upper(letter) + " word in the line", column);
  }
  const auto index = static_cast<std::size_t>(letter - 'a');
  block.values[index] = ReadGCodeValue(cursor, variables);
  block.columns[index] = column;
  block.letters |= 1U << index;
}

// "O1234" alone numbers the program; anything after the number is control flow.
void ReadControlFlow(GCodeCursor& cursor, GCodeBlock& block) {
  const std::string_view rest = cursor.Rest();
  const bool programNumber =
      rest.size() > 1 && rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
  if (!programNumber) {
    for (const char character : rest) {
      block.controlFlow += Upper(character);
    }
  }
  cursor.Skip(rest.size());
}

}  // namespace

void GCodeBlock::Clear() {
  letters = 0;
  gCodes.clear();
  mCodes.clear();
  numberedSettings.clear();
  namedSettings.clear();
  controlFlow.clear();
}

void StripGCodeLine(std::string_view line, GCodeText& text) {
  text.characters.clear();
  text.columns.clear();
  text.deleted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char character = line[at];
    if (IsSpace(character)) {
      continue;
    }
    if (character == ';') {
      return;
    }
    if (character == '(') {
      at = SkipComment(line, at);
      continue;
    }
    if (character < '!' || character > '~') {
      throw GCodeError("character that no program can hold", static_cast<int>(at + 1));
    }
    if (character == '/' && text.characters.empty() && !text.deleted) {
      // What is left out is not looked at, so that it need not be right.
      text.deleted = true;
      return;
    }
    text.characters += Lower(character);
    text.columns.push_back(static_cast<int>(at + 1));
  }
}

void ParseGCodeLine(const GCodeText& text, const GCodeVariables& variables, GCodeBlock& block) {
  block.Clear();
  GCodeCursor cursor(text);
  while (!cursor.AtEnd()) {
    const char next = cursor.Peek();
    if (next == '#') {
      ReadSetting(cursor, variables, block);
    } else if (next == 'o') {
      ReadControlFlow(cursor, block);
    } else if (next >= 'a' && next <= 'z') {
      ReadWord(cursor, variables, block);
    } else {
      cursor.Fail(std::string("\"") + next + "\" where a word should begin");
    }
  }
}

}  // namespace formats

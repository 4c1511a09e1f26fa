#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/programs/GCodeCursor.h"
#include "formats/programs/GCodeVariables.h"

namespace formats {

// A G or M number, in tenths: G90.1 is 901.
struct GCodeCode {
  int tenths;
  int column;
};

// One line of a program, its expressions already worked out. Letters are lower case.
struct GCodeBlock {
  std::uint32_t letters = 0;  // bit n: the letter 'a' + n has a value; never G and M
  std::array<double, 26> values{};
  std::array<int, 26> columns{};
  std::vector<GCodeCode> gCodes;
  std::vector<GCodeCode> mCodes;

  // What the line assigns; it counts from the next line on.
  struct NumberedSetting {
    int number;
    double value;
  };
  struct NamedSetting {
    std::string name;
    double value;
  };
  std::vector<NumberedSetting> numberedSettings;
  std::vector<NamedSetting> namedSettings;

  // A line of control flow ("O100 IF [...]"), in upper case; its other words are not looked at.
  std::string controlFlow;

  bool Has(char letter) const { return (letters >> (letter - 'a') & 1U) != 0; }
  double Value(char letter) const { return values[static_cast<std::size_t>(letter - 'a')]; }
  int Column(char letter) const { return columns[static_cast<std::size_t>(letter - 'a')]; }
  double ValueOr(char letter, double otherwise) const {
    return Has(letter) ? Value(letter) : otherwise;
  }

  void Clear();
};

// Leaves out spaces and comments and turns to lower case. Throws GCodeError on a comment that is
// not closed or opens another, and on a character that no program can hold.
void StripGCodeLine(std::string_view line, GCodeText& text);

// Reads the words of a stripped line with the variables as they stand before it. Throws GCodeError.
void ParseGCodeLine(const GCodeText& text, const GCodeVariables& variables, GCodeBlock& block);

}  // namespace formats

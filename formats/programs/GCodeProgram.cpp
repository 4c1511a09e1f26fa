#include "formats/programs/GCodeProgram.h"

#include <string_view>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/programs/GCodeError.h"
#include "formats/programs/GCodeInterpreter.h"

namespace formats {
namespace {

constexpr std::size_t kLongestLine = 100'000;

[[noreturn]] void Fail(const std::string& name, std::int64_t line, int column,
                       const std::string& reason) {
  std::string place = "line " + std::to_string(line);
  if (column > 0) {
    place += ", column " + std::to_string(column);
  }
  throw FileError(name + ": " + reason + " (" + place + ")");
}

// Editors of some systems put a byte order mark before the first character.
std::string_view WithoutByteOrderMark(std::string_view line) {
  return line.starts_with("\xEF\xBB\xBF") ? line.substr(3) : line;
}

}  // namespace

GCodeReport RunGCode(std::istream& program, const std::string& name, const GCodeOptions& options,
                     GCodeMoves& moves) {
  GCodeReport report;
  GCodeInterpreter interpreter(options, moves, report);
  std::string line;
  try {
    interpreter.Begin();
    while (std::getline(program, line)) {
      ++report.lines;
      if (line.size() > kLongestLine) {
        throw GCodeError("line longer than any program's", 0);
      }
      if (!interpreter.Run(report.lines == 1 ? WithoutByteOrderMark(line) : line)) {
        return report;
      }
    }
  } catch (const GCodeError& error) {
    Fail(name, report.lines, error.Column(), error.what());
  }
  if (program.bad()) {
    throw FileError(name + ": cannot be read");
  }
  return report;
}

GCodeReport RunGCodeFile(const std::string& path, const GCodeOptions& options, GCodeMoves& moves) {
  std::ifstream program = OpenForReading(path);
  return RunGCode(program, path, options, moves);
}

}  // namespace formats

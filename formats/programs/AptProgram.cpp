#include "formats/programs/AptProgram.h"

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/programs/AptInterpreter.h"
#include "formats/programs/AptStatement.h"
#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

constexpr std::size_t kLongestStatement = 100'000;

// Editors of some systems put a byte order mark before the first character.
std::string_view WithoutByteOrderMark(std::string_view line) {
  return line.starts_with("\xEF\xBB\xBF") ? line.substr(3) : line;
}

class Lines {
 public:
  Lines(std::istream& program, std::int64_t& count) : program_(program), count_(count) {}

  // The next statement, its lines joined. False at the end of the program.
  bool Next(std::string& statement) {
    statement.clear();
    bool continues = true;
    bool any = false;
    while (continues && std::getline(program_, line_)) {
      any = true;
      ++count_;
      const std::string_view line = count_ == 1 ? WithoutByteOrderMark(line_) : line_;
      if (statement.size() + line.size() > kLongestStatement) {
        throw GCodeError("statement longer than any program's", 0);
      }
      statement += StripAptLine(line, &continues);
    }
    return any;
  }

 private:
  std::istream& program_;
  std::int64_t& count_;
  std::string line_;
};

}  // namespace

AptReport RunApt(std::istream& program, const std::string& name, const GCodeOptions& options,
                 AptMoves& moves) {
  AptReport report;
  AptInterpreter interpreter(options, moves, report);
  Lines lines(program, report.lines);
  std::string statement;
  try {
    while (lines.Next(statement)) {
      if (!statement.empty() && !interpreter.Run(ParseAptStatement(statement))) {
        return report;
      }
    }
  } catch (const GCodeError& error) {
    throw FileError(name + ": " + error.what() + " (line " + std::to_string(report.lines) + ")");
  }
  if (program.bad()) {
    throw FileError(name + ": cannot be read");
  }
  return report;
}

AptReport RunAptFile(const std::string& path, const GCodeOptions& options, AptMoves& moves) {
  std::ifstream program = OpenForReading(path);
  return RunApt(program, path, options, moves);
}

}  // namespace formats

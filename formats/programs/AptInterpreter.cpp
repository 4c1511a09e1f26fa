#include "formats/programs/AptInterpreter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "formats/programs/AptCutter.h"
#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

// Say nothing about where the tool goes.
constexpr std::array<std::string_view, 28> kWithoutEffect = {
    "SPINDL", "COOLNT", "FEDRAT", "SELECT", "SELCTL", "CUTCOM", "MACHIN",
    "INTOL",  "OUTTOL", "TOLER",  "DELAY",  "STOP",   "OPSTOP", "OPSKIP",
    "SEQNO",  "HEAD",   "CLAMP",  "AUXFUN", "PREFUN", "MODE",   "ARCSLP",
    "CLPRNT", "NOPOST", "TLSPEC", "PRINT",  "LINTOL", "MCHTOL", "PPTOL"};

template <typename Words>
bool Contains(const Words& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool HasWord(const AptStatement& statement, std::string_view word) {
  return std::any_of(statement.words.begin(), statement.words.end(),
                     [word](const AptWord& candidate) { return candidate.text == word; });
}

// For lists that people read.
constexpr std::size_t kLongestName = 40;

std::string Shown(std::string name, std::size_t longest = kLongestName) {
  name.resize(std::min(name.size(), longest));
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return name;
}

bool IsIdentity(const AptStatement& statement) {
  constexpr std::array<double, 12> kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};
  return std::equal(
      statement.words.begin(), statement.words.end(), kIdentity.begin(), kIdentity.end(),
      [](const AptWord& word, double number) { return word.isNumber && word.number == number; });
}

// TRNTYP/WORLD,0,0,0: positions are in the frame that they are written in.
bool IsZeroShift(const AptStatement& statement) {
  return !statement.words.empty() &&
         std::all_of(statement.words.begin() + 1, statement.words.end(),
                     [](const AptWord& word) { return word.isNumber && word.number == 0; });
}

bool IsFrameOfItsOwn(const AptStatement& statement) {
  return (statement.major == "CSYS" && IsIdentity(statement)) ||
         (statement.major == "TRNTYP" && IsZeroShift(statement));
}

}  // namespace

AptInterpreter::AptInterpreter(const GCodeOptions& options, AptMoves& moves, AptReport& report)
    : options_(options),
      moves_(moves),
      report_(report),
      millimetre_(ScaleBetween(true, options.metric)(1)) {}

bool AptInterpreter::Run(const AptStatement& statement) {
  if (statement.major == "FINI") {
    return false;
  }
  if (RunMotion(statement) || RunTool(statement) || RunState(statement)) {
    return true;
  }
  if (statement.major == "INSERT") {
    AddInsert(statement);
  } else if (!IsAptText(statement.major) && !Contains(kWithoutEffect, statement.major) &&
             !IsFrameOfItsOwn(statement)) {
    NotUnderstood(statement.major);
  }
  return true;
}

bool AptInterpreter::RunMotion(const AptStatement& statement) {
  if (statement.major == "FROM") {
    From(TargetOf(statement));
  } else if (statement.major == "GOTO") {
    GoTo(TargetOf(statement));
  } else if (statement.major == "GODLTA") {
    GoTo(Shifted(statement));
  } else if (statement.major == "CIRCLE") {
    SetCircle(statement);
  } else if (statement.major == "RAPID") {
    rapid_ = true;
  } else {
    return false;
  }
  return true;
}

bool AptInterpreter::RunTool(const AptStatement& statement) {
  if (statement.major == "CUTTER") {
    SetCutter(statement);
  } else if (statement.major == "LOADTL" || statement.major == "LOAD") {
    LoadTool(statement);
  } else {
    return false;
  }
  return true;
}

bool AptInterpreter::RunState(const AptStatement& statement) {
  if (statement.major == "UNIT" || statement.major == "UNITS") {
    SetUnits(statement);
  } else if (statement.major == "MULTAX") {
    SetMultax(statement);
  } else if (statement.major == "CYCLE") {
    SetCycle(statement);
  } else {
    return false;
  }
  return true;
}

void AptInterpreter::SetUnits(const AptStatement& statement) {
  const std::string unit = statement.words.empty() ? "" : statement.words.front().text;
  const bool millimetres = unit == "MM";
  if (!millimetres && unit != "INCH" && unit != "INCHES" && unit != "IN") {
    throw GCodeError(statement.major + " is neither MM nor INCHES", 0);
  }
  scale_ = ScaleBetween(millimetres, options_.metric);
}

void AptInterpreter::SetMultax(const AptStatement& statement) {
  // Off: the axis stands upright again, whatever the last vector was.
  if (HasWord(statement, "OFF")) {
    axis_ = kVerticalAxis;
  }
}

void AptInterpreter::SetCycle(const AptStatement& statement) {
  if (IsDrilling(statement)) {
    cycle_ = CycleOf(statement, scale_);
    lastCycle_ = cycle_;
    return;
  }
  const std::string kind = statement.words.empty() ? "" : statement.words.front().text;
  if (kind == "ON" && lastCycle_) {
    cycle_ = lastCycle_;
    return;
  }
  cycle_.reset();
  if (kind != "OFF" && kind != "NOMORE" && kind != "INIT") {
    NotUnderstood("CYCLE/" + kind);
  }
}

void AptInterpreter::SetCircle(const AptStatement& statement) {
  const std::vector<double> numbers = NumbersOf(statement);
  if (numbers.size() < 6) {
    throw GCodeError("CIRCLE takes a centre and an axis, six numbers, and a radius if need be", 0);
  }
  Circle circle;
  circle.centre = Scaled(numbers[0], numbers[1], numbers[2]);
  circle.axis = {numbers[3], numbers[4], numbers[5]};
  if (numbers.size() > 6) {
    circle.radius = scale_(numbers[6]);
  }
  circle_ = circle;
}

void AptInterpreter::SetCutter(const AptStatement& statement) {
  std::vector<double> numbers = NumbersOf(statement);
  for (const std::size_t length : {0U, 1U, 2U, 3U, 6U}) {
    if (length < numbers.size()) {
      numbers[length] = scale_(numbers[length]);
    }
  }
  cutter_ = ToolOfCutter(numbers, millimetre_);
  cutterGiven_ = true;
  toolChanged_ = true;
}

void AptInterpreter::LoadTool(const AptStatement& statement) {
  constexpr double kHighestTool = 999'999'999;
  const auto number = std::find_if(statement.words.begin(), statement.words.end(),
                                   [](const AptWord& word) { return word.isNumber; });
  if (statement.major == "LOAD" && !HasWord(statement, "TOOL")) {
    NotUnderstood(Shown("LOAD/" + (statement.words.empty() ? "" : statement.words.front().text)));
    return;
  }
  if (number == statement.words.end() || number->number != std::floor(number->number) ||
      number->number < 0 || number->number > kHighestTool) {
    throw GCodeError(statement.major + " takes a tool number, a whole number from 0 to 999999999",
                     0);
  }
  tool_ = static_cast<std::int32_t>(number->number);
  toolChanged_ = true;
}

void AptInterpreter::NotUnderstood(const std::string& name) {
  if (options_.strict) {
    throw GCodeError(Shown(name) + " is not understood", 0);
  }
  report_.AddUnknown(Shown(name), report_.lines);
}

void AptInterpreter::AddInsert(const AptStatement& statement) {
  ++report_.insertCount;
  if (report_.inserts.size() < AptReport::kMostNotes) {
    report_.inserts.push_back({report_.lines, Shown(statement.text, AptReport::kLongestNote)});
  }
}

}  // namespace formats

#include "formats/programs/GCodeInterpreter.h"

#include <cmath>
#include <limits>

#include "formats/programs/GCodeOffsets.h"

namespace formats {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

constexpr std::array<char, 3> kAxisLetters = {'x', 'y', 'z'};

// A word's value as a whole number between the two bounds.
int WholeNumber(const GCodeBlock& block, char letter, int lowest, int highest) {
  const double value = block.Value(letter);
  const double whole = std::round(value);
  if (std::abs(value - whole) > 0.0001 || whole < lowest || whole > highest) {
    throw GCodeError(std::string(1, static_cast<char>(letter - 'a' + 'A')) +
                         " takes a whole number from " + std::to_string(lowest) + " to " +
                         std::to_string(highest),
                     block.Column(letter));
  }
  return static_cast<int>(whole);
}

}  // namespace

GCodeInterpreter::GCodeInterpreter(const GCodeOptions& options, GCodeMoves& moves,
                                   GCodeReport& report)
    : options_(options),
      moves_(moves),
      report_(report),
      millimetre_(ScaleBetween(true, options.metric)(1)),
      position_{kUnknown, kUnknown, kUnknown},
      initialLevel_(kUnknown) {
  PublishPosition();
}

void GCodeInterpreter::Begin() {
  if (options_.firstTool != 0) {
    LoadTool(options_.firstTool);
  }
}

bool GCodeInterpreter::Run(std::string_view line) {
  StripGCodeLine(line, text_);
  if (text_.deleted) {
    ++report_.deletedLines;
    return true;
  }
  if (text_.characters.empty()) {
    return true;
  }
  const bool first = !anyLine_;
  anyLine_ = true;
  if (text_.characters == "%") {
    // The second of a pair ends the program; what follows it is none of its lines.
    const bool ends = openedByPercent_;
    openedByPercent_ = first;
    return !ends;
  }
  ParseGCodeLine(text_, variables_, block_);
  const bool goesOn = Execute(block_);
  Assign(block_);
  PublishPosition();
  return goesOn;
}

bool GCodeInterpreter::Execute(const GCodeBlock& block) {
  if (!block.controlFlow.empty()) {
    NotUnderstood(block.controlFlow, text_.columns.front());
    return true;
  }
  SortCodes(block);
  CheckLetters(block);
  ChangeTool(block);
  SetModes();
  SetMotion();
  const bool takesAxisWords = TakesAxisWords(block);
  SetOffsets(block);
  if (!takesAxisWords) {
    Move(block);
  }
  for (const GCodeCode& code : block.mCodes) {
    if (code.tenths == 20 || code.tenths == 300) {
      return false;
    }
  }
  return true;
}

// What a line assigns counts after everything else on it.
void GCodeInterpreter::Assign(const GCodeBlock& block) {
  for (const GCodeBlock::NumberedSetting& setting : block.numberedSettings) {
    variables_.Set(setting.number, setting.value);
  }
  for (const GCodeBlock::NamedSetting& setting : block.namedSettings) {
    variables_.SetNamed(setting.name, setting.value);
  }
}

void GCodeInterpreter::PublishPosition() {
  for (int axis = 0; axis < 3; ++axis) {
    const double position = position_[static_cast<std::size_t>(axis)];
    variables_.Set(GCodeVariables::kCurrentPosition + axis,
                   (position - OffsetInUse(variables_, axis)) * scale_.over / scale_.times);
  }
}

void GCodeInterpreter::SortCodes(const GCodeBlock& block) {
  codes_.fill(-1);
  unknownTakesAxisWords_ = false;
  for (const GCodeCode& code : block.gCodes) {
    const GCodeMeaning meaning = MeaningOfG(code.tenths);
    if (meaning.support != GCodeSupport::kYes) {
      NotUnderstood(GCodeName('G', code.tenths), code.column);
    }
    if (meaning.support == GCodeSupport::kNo) {
      // Neither the plane nor the cutter's side has axis words of its own; of the others nobody
      // knows, so the line's axis words are not taken for a motion.
      unknownTakesAxisWords_ |=
          meaning.group != GCodeGroup::kPlane && meaning.group != GCodeGroup::kCutterSide;
      continue;
    }
    int& place = codes_[static_cast<std::size_t>(meaning.group)];
    if (place >= 0) {
      throw GCodeError(GCodeName('G', place) + " and " + GCodeName('G', code.tenths) +
                           " exclude each other in one line",
                       code.column);
    }
    place = code.tenths;
  }
  for (const GCodeCode& code : block.mCodes) {
    if (!UnderstandsM(code.tenths)) {
      NotUnderstood(GCodeName('M', code.tenths), code.column);
    }
  }
}

void GCodeInterpreter::NotUnderstood(const std::string& word, int column) {
  if (options_.strict) {
    throw GCodeError(word + " is not understood", column);
  }
  report_.AddUnknown(word, report_.lines);
}

void GCodeInterpreter::CheckLetters(const GCodeBlock& block) {
  for (const char letter : {'a', 'b', 'c'}) {
    if (block.Has(letter) && block.Value(letter) != 0) {
      throw GCodeError(std::string("rotary axis ") + static_cast<char>(letter - 'a' + 'A') +
                           " turns: only 3-axis programs can be cut",
                       block.Column(letter));
    }
  }
  for (const char letter : {'e', 'u', 'v', 'w'}) {
    if (block.Has(letter)) {
      NotUnderstood(std::string(1, static_cast<char>(letter - 'a' + 'A')), block.Column(letter));
    }
  }
}

void GCodeInterpreter::ChangeTool(const GCodeBlock& block) {
  constexpr int kHighestTool = 999'999'999;
  if (block.Has('t')) {
    selectedTool_ = WholeNumber(block, 't', 0, kHighestTool);
  }
  for (const GCodeCode& code : block.mCodes) {
    try {
      if (code.tenths == 60) {
        if (!selectedTool_) {
          throw GCodeError("M6 before any T word", code.column);
        }
        LoadTool(*selectedTool_);
      } else if (code.tenths == 610) {
        if (!block.Has('q')) {
          throw GCodeError("M61 without Q", code.column);
        }
        LoadTool(WholeNumber(block, 'q', 0, kHighestTool));
      }
    } catch (const GCodeError& error) {
      throw GCodeError(error.what(), error.Column() > 0 ? error.Column() : code.column);
    }
  }
}

// A change may take the spindle anywhere: coordinates keep counting for axes that the next moves do
// not name, but no move begins at the old place.
void GCodeInterpreter::LoadTool(std::int32_t number) {
  tool_ = number;
  connected_ = false;
  variables_.Set(GCodeVariables::kCurrentTool, number);
  if (number != 0) {
    ++report_.toolLoads;
  }
  moves_.LoadTool(number);
}

void GCodeInterpreter::SetModes() {
  if (const int code = Code(GCodeGroup::kPlane); code >= 0) {
    plane_ = code == 170 ? kPlaneXY : code == 180 ? kPlaneZX : kPlaneYZ;
  }
  if (const int code = Code(GCodeGroup::kUnits); code >= 0) {
    scale_ = ScaleBetween(code == 210, options_.metric);
  }
  if (const int code = Code(GCodeGroup::kCoordinateSystem); code >= 0) {
    const int system = code <= 590 ? (code - 540) / 10 + 1 : code - 590 + 6;
    variables_.Set(GCodeVariables::kSystemInUse, system);
  }
  if (const int code = Code(GCodeGroup::kDistance); code >= 0) {
    incremental_ = code == 910;
  }
  if (const int code = Code(GCodeGroup::kArcDistance); code >= 0) {
    absoluteCentres_ = code == 901;
  }
  if (const int code = Code(GCodeGroup::kRetract); code >= 0) {
    retractToInitial_ = code == 980;
  }
}

void GCodeInterpreter::SetMotion() {
  const int code = Code(GCodeGroup::kMotion);
  motionGiven_ = code >= 0;
  if (!motionGiven_) {
    return;
  }
  const bool inCycle = mode_ == Mode::kDrill || mode_ == Mode::kPeckDrill;
  switch (code) {
    case 0:
      mode_ = Mode::kRapid;
      break;
    case 10:
      mode_ = Mode::kLine;
      break;
    case 20:
      mode_ = Mode::kClockwise;
      break;
    case 30:
      mode_ = Mode::kCounterClockwise;
      break;
    case 800:
      mode_ = Mode::kNone;
      break;
    case 810:
    case 820:
      mode_ = Mode::kDrill;
      break;
    case 830:
      mode_ = Mode::kPeckDrill;
      break;
    default:
      mode_ = Mode::kNotUnderstood;
  }
  const bool isCycle = mode_ == Mode::kDrill || mode_ == Mode::kPeckDrill;
  if (isCycle && !inCycle) {
    initialLevel_ = position_[static_cast<std::size_t>(plane_.normal)];
    cycleRetract_.reset();
    cycleBottom_.reset();
    cyclePeck_.reset();
  }
}

bool GCodeInterpreter::TakesAxisWords(const GCodeBlock& block) {
  const int code = Code(GCodeGroup::kOneLine);
  // Some machines give the time of a dwell as X.
  if (code == 40 || code == 100 || (code >= 280 && code <= 301) || (code >= 920 && code <= 923)) {
    return true;
  }
  if (unknownTakesAxisWords_ && !motionGiven_) {
    Forget(block);
    return true;
  }
  return false;
}

void GCodeInterpreter::SetOffsets(const GCodeBlock& block) {
  switch (Code(GCodeGroup::kOneLine)) {
    case 100:
      SetOrigin(block);
      break;
    case 280:
    case 300:
      GoHome(block);
      break;
    case 920:
      Shift(block);
      break;
    case 921:
    case 922:
      EndShift(variables_, Code(GCodeGroup::kOneLine) == 921);
      break;
    case 923:
      ResumeShift(variables_);
      break;
    default:
      break;
  }
}

// G10 L2 says where a system's zero lies, L20 what the current position is called in it.
void GCodeInterpreter::SetOrigin(const GCodeBlock& block) {
  const double kind = block.ValueOr('l', 0);
  if (kind != 2 && kind != 20) {
    const bool isNumber = kind >= 1 && kind <= 99 && kind == std::floor(kind);
    NotUnderstood(isNumber ? "G10 L" + std::to_string(static_cast<int>(kind)) : "G10",
                  block.gCodes.front().column);
    return;
  }
  if (block.Has('r') && block.Value('r') != 0) {
    NotUnderstood("G10 R", block.Column('r'));
  }
  const int given = block.Has('p') ? WholeNumber(block, 'p', 0, 9) : 0;
  const int system = given == 0 ? SystemInUse(variables_) : given;
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = kAxisLetters[static_cast<std::size_t>(axis)];
    if (!block.Has(letter)) {
      continue;
    }
    double origin = scale_(block.Value(letter));
    if (kind == 20) {
      origin = KnownPosition(block, letter) - origin - ShiftInUse(variables_, axis);
    }
    variables_.Set(OriginVariable(system, axis), origin);
  }
}

double GCodeInterpreter::KnownPosition(const GCodeBlock& block, char letter) const {
  const double position = position_[static_cast<std::size_t>(letter - 'x')];
  if (std::isnan(position)) {
    throw GCodeError("the position on this axis is not known yet", block.Column(letter));
  }
  return position;
}

// By way of the point given to a place that only the machine knows.
void GCodeInterpreter::GoHome(const GCodeBlock& block) {
  if (HasAxisWords(block)) {
    MoveStraight(Target(block), Motion::kRapid);
    Forget(block);
  } else {
    position_.fill(kUnknown);
    connected_ = false;
  }
}

void GCodeInterpreter::Shift(const GCodeBlock& block) {
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = kAxisLetters[static_cast<std::size_t>(axis)];
    if (block.Has(letter)) {
      ShiftTo(variables_, axis, KnownPosition(block, letter), scale_(block.Value(letter)));
    }
  }
}

bool GCodeInterpreter::HasAxisWords(const GCodeBlock& block) const {
  return block.Has('x') || block.Has('y') || block.Has('z');
}

// The axes named are where nobody knows.
void GCodeInterpreter::Forget(const GCodeBlock& block) {
  for (const char letter : kAxisLetters) {
    if (block.Has(letter)) {
      position_[static_cast<std::size_t>(letter - 'x')] = kUnknown;
    }
  }
  connected_ = false;
}

ToolTip GCodeInterpreter::Target(const GCodeBlock& block) const {
  ToolTip target = position_;
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = kAxisLetters[static_cast<std::size_t>(axis)];
    if (!block.Has(letter)) {
      continue;
    }
    double& coordinate = target[static_cast<std::size_t>(axis)];
    const double value = scale_(block.Value(letter));
    coordinate = incremental_ ? coordinate + value : value + OffsetInUse(variables_, axis);
    if (std::isinf(coordinate)) {
      throw GCodeError("coordinate too large", block.Column(letter));
    }
  }
  return target;
}

}  // namespace formats

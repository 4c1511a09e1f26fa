// The motions of the interpreter: straight, on arcs, in canned cycles.
#include <cmath>
#include <limits>

#include "formats/programs/GCodeCycle.h"
#include "formats/programs/GCodeInterpreter.h"
#include "formats/programs/GCodeOffsets.h"

namespace formats {
namespace {

// What one line may ask for, so that a slip of the finger does not fill the memory.
constexpr double kMostMovesOfALine = 1'000'000;
constexpr double kPeckClearance = 0.254;  // mm

constexpr std::array<char, 3> kAxisLetters = {'x', 'y', 'z'};
constexpr std::array<char, 3> kCentreLetters = {'i', 'j', 'k'};

bool IsKnown(const ToolTip& tip) {
  return !std::isnan(tip[0]) && !std::isnan(tip[1]) && !std::isnan(tip[2]);
}

double Distance(const ToolTip& a, const ToolTip& b) {
  double sum = 0;
  for (std::size_t axis = 0; axis < a.size(); ++axis) {
    sum += (a[axis] - b[axis]) * (a[axis] - b[axis]);
  }
  return std::sqrt(sum);
}

// The repeats of a cycle, the turns of an arc: a whole number above zero.
int Count(const GCodeBlock& block, char letter) {
  const double value = block.ValueOr(letter, 1);
  const double whole = std::round(value);
  if (std::abs(value - whole) > 0.0001 || whole < 1 || whole > kMostMovesOfALine) {
    throw GCodeError(
        std::string(1, static_cast<char>(letter - 'a' + 'A')) + " takes a whole number above zero",
        block.Column(letter));
  }
  return static_cast<int>(whole);
}

}  // namespace

void GCodeInterpreter::Move(const GCodeBlock& block) {
  const bool isArc = mode_ == Mode::kClockwise || mode_ == Mode::kCounterClockwise;
  const bool isCircle = isArc && (block.Has('i') || block.Has('j') || block.Has('k'));
  if (mode_ == Mode::kNotUnderstood) {
    if (motionGiven_ || HasAxisWords(block)) {
      Forget(block);
    }
    return;
  }
  if (!HasAxisWords(block) && !isCircle) {
    return;
  }
  if (Code(GCodeGroup::kMachineCoordinates) >= 0) {
    if (mode_ != Mode::kRapid && mode_ != Mode::kLine) {
      throw GCodeError("G53 goes with G0 and G1 only", 0);
    }
    // Where the machine's own zero lies is not in the program.
    Forget(block);
    return;
  }
  switch (mode_) {
    case Mode::kNone:
      for (const char letter : kAxisLetters) {
        if (block.Has(letter)) {
          throw GCodeError("axis word without a motion in force", block.Column(letter));
        }
      }
      break;
    case Mode::kRapid:
      MoveStraight(Target(block), Motion::kRapid);
      break;
    case Mode::kLine:
      MoveStraight(Target(block), Motion::kFeed);
      break;
    case Mode::kClockwise:
    case Mode::kCounterClockwise:
      MoveOnArc(block, Target(block));
      break;
    default:
      Drill(block);
  }
}

// Counts a move and says whether a tool makes it.
bool GCodeInterpreter::InSpindle(Motion motion) {
  if (tool_ != 0) {
    return true;
  }
  if (motion == Motion::kFeed) {
    throw GCodeError("feed move without a tool in the spindle", 0);
  }
  ++report_.withoutTool;
  return false;
}

void GCodeInterpreter::MoveStraight(const ToolTip& target, Motion motion) {
  const bool swept = InSpindle(motion);
  if (!IsKnown(target)) {
    ++report_.beforeStart;
    connected_ = false;
  } else if (swept) {
    Place(target, motion);
  }
  position_ = target;
}

// The tool is at `tip` next.
void GCodeInterpreter::Place(const ToolTip& tip, Motion motion) {
  ++(motion == Motion::kRapid ? report_.rapids : report_.feeds);
  report_.AddPosition(tip);
  if (!connected_) {
    moves_.Start(tip, motion);
    connected_ = true;
    return;
  }
  (motion == Motion::kRapid ? report_.rapidLength : report_.feedLength) += Distance(position_, tip);
  moves_.MoveTo(tip, motion);
}

void GCodeInterpreter::MoveOnArc(const GCodeBlock& block, const ToolTip& target) {
  InSpindle(Motion::kFeed);
  for (const int axis : {plane_.first, plane_.second}) {
    if (std::isnan(position_[static_cast<std::size_t>(axis)])) {
      throw GCodeError("arc from a position that is not known", 0);
    }
  }
  const GCodeArc arc = ArcOf(block, target);
  if (!IsKnown(target) || !IsKnown(position_)) {
    ++report_.beforeStart;
    connected_ = false;
    position_ = target;
    return;
  }
  const double wanted = ChordsOf(arc, options_.arcTolerance);
  if (!(wanted <= kMostMovesOfALine)) {
    throw GCodeError("arc that would take more than a million chords", 0);
  }
  // An arc lies where its start is, so that its start counts as given.
  if (!connected_) {
    moves_.Start(arc.start, Motion::kFeed);
    report_.AddPosition(arc.start);
    connected_ = true;
  }
  const auto chords = static_cast<std::int64_t>(wanted);
  for (std::int64_t chord = 1; chord <= chords; ++chord) {
    const double share = static_cast<double>(chord) / wanted;
    const ToolTip tip = chord < chords ? arc.At(share) : arc.end;
    report_.AddPosition(tip);
    moves_.MoveTo(tip, Motion::kFeed);
  }
  ++report_.arcs;
  report_.chords += chords;
  report_.feedLength += arc.Length();
  position_ = target;
}

GCodeArc GCodeInterpreter::ArcOf(const GCodeBlock& block, const ToolTip& target) const {
  const bool clockwise = mode_ == Mode::kClockwise;
  const int turns = Count(block, 'p');
  const char firstLetter = kCentreLetters[static_cast<std::size_t>(plane_.first)];
  const char secondLetter = kCentreLetters[static_cast<std::size_t>(plane_.second)];
  const char otherLetter = kCentreLetters[static_cast<std::size_t>(plane_.normal)];
  if (block.Has('r')) {
    return ArcOfRadius(plane_, position_, target, scale_(block.Value('r')), clockwise, turns,
                       millimetre_);
  }
  if (block.Has(otherLetter)) {
    throw GCodeError("arc centre off the plane in force", block.Column(otherLetter));
  }
  if (!block.Has(firstLetter) && !block.Has(secondLetter)) {
    throw GCodeError("arc without centre or radius", 0);
  }
  const auto centre = [&](int axis, char letter) {
    if (!absoluteCentres_) {
      return position_[static_cast<std::size_t>(axis)] + scale_(block.ValueOr(letter, 0));
    }
    if (!block.Has(letter)) {
      throw GCodeError("G90.1 needs both words of the centre", 0);
    }
    return scale_(block.Value(letter)) + OffsetInUse(variables_, axis);
  };
  return ArcAboutCentre(plane_, position_, target, centre(plane_.first, firstLetter),
                        centre(plane_.second, secondLetter), clockwise, turns, millimetre_);
}

void GCodeInterpreter::KeepCycleWords(const GCodeBlock& block) {
  const char normal = kAxisLetters[static_cast<std::size_t>(plane_.normal)];
  if (block.Has('r')) {
    cycleRetract_ = scale_(block.Value('r'));
  }
  if (block.Has(normal)) {
    cycleBottom_ = scale_(block.Value(normal));
  }
  if (block.Has('q')) {
    cyclePeck_ = scale_(block.Value('q'));
  }
  if (!cycleRetract_ || !cycleBottom_) {
    throw GCodeError(std::string("canned cycle without ") +
                         (cycleRetract_ ? static_cast<char>(normal - 'a' + 'A') : 'R'),
                     0);
  }
  if (mode_ == Mode::kPeckDrill && (!cyclePeck_ || !(*cyclePeck_ > 0))) {
    throw GCodeError("G83 without a Q above zero", 0);
  }
}

// In incremental mode R counts from where the tool is, the bottom from R, and each repeat goes a
// step further.
void GCodeInterpreter::Drill(const GCodeBlock& block) {
  InSpindle(Motion::kFeed);
  KeepCycleWords(block);
  const auto normal = static_cast<std::size_t>(plane_.normal);
  const int repeats = Count(block, block.Has('l') ? 'l' : 'k');
  const double offset = OffsetInUse(variables_, plane_.normal);
  DrillCycle cycle;
  cycle.retract = *cycleRetract_ + (incremental_ ? position_[normal] : offset);
  cycle.bottom = *cycleBottom_ + (incremental_ ? cycle.retract : offset);
  if (std::isnan(cycle.retract)) {
    throw GCodeError("canned cycle counted from a height that is not known", 0);
  }
  if (!std::isfinite(cycle.retract) || !std::isfinite(cycle.bottom)) {
    throw GCodeError("coordinate too large", 0);
  }
  const bool toInitial = retractToInitial_ && initialLevel_ > cycle.retract;
  cycle.clear = toInitial ? initialLevel_ : cycle.retract;
  cycle.peck = mode_ == Mode::kPeckDrill ? *cyclePeck_ : 0;
  cycle.pecking = kPeckClearance * millimetre_;
  for (int repeat = 0; repeat < repeats; ++repeat) {
    ToolTip hole = Target(block);
    hole[normal] = cycle.clear;
    if (!IsKnown(hole)) {
      ++report_.beforeStart;
      connected_ = false;
      position_ = hole;
      continue;
    }
    if (!connected_) {
      // The way to the first hole is not known: begin above it.
      position_[static_cast<std::size_t>(plane_.first)] =
          hole[static_cast<std::size_t>(plane_.first)];
      position_[static_cast<std::size_t>(plane_.second)] =
          hole[static_cast<std::size_t>(plane_.second)];
    }
    DrillHole(cycle, plane_, position_, hole, kMostMovesOfALine / repeats,
              [this](const ToolTip& tip, Motion motion) {
                Place(tip, motion);
                position_ = tip;
              });
    ++report_.holes;
  }
}

}  // namespace formats

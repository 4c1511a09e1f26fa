#include "formats/programs/GCodeArc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "formats/DecimalText.h"
#include "formats/programs/DegreeTrigonometry.h"
#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

constexpr double kSamePoint = 1e-6;        // mm: ends closer than this coincide
constexpr double kRadiusMismatch = 0.5;    // mm: never taken
constexpr double kRadiusRounding = 0.005;  // mm: always taken
constexpr double kRadiusShare = 0.001;     // of the radius: taken between the two

struct InPlane {
  double first;
  double second;
};

InPlane FromCentre(const GCodeArc& arc, const ToolTip& tip) {
  return {tip[static_cast<std::size_t>(arc.plane.first)] - arc.centreFirst,
          tip[static_cast<std::size_t>(arc.plane.second)] - arc.centreSecond};
}

// Not hypot: libraries differ in its last place.
double Length(const InPlane& v) { return std::sqrt(v.first * v.first + v.second * v.second); }

bool Coincide(const GCodeArc& arc, double millimetre) {
  const InPlane from = FromCentre(arc, arc.start);
  const InPlane to = FromCentre(arc, arc.end);
  return Length({to.first - from.first, to.second - from.second}) <= kSamePoint * millimetre;
}

// The signed angle from start to end, with the turns asked for.
double Sweep(const GCodeArc& arc, bool clockwise, int turns, bool closed) {
  constexpr double kTurn = 2 * std::numbers::pi;
  const double extra = kTurn * (turns - 1);
  double angle = kTurn;
  if (!closed) {
    const InPlane from = FromCentre(arc, arc.start);
    const InPlane to = FromCentre(arc, arc.end);
    // From the two vectors at once: a short arc of a huge radius keeps its digits.
    angle = AngleOf(from.first * to.second - from.second * to.first,
                    from.first * to.first + from.second * to.second);
    if (clockwise) {
      angle = -angle;
    }
    if (angle <= 0) {
      angle += kTurn;
    }
  }
  return clockwise ? -(angle + extra) : angle + extra;
}

}  // namespace

ToolTip GCodeArc::At(double t) const {
  const InPlane from = FromCentre(*this, start);
  const double startRadius = ::formats::Length(from);
  const double endRadius = ::formats::Length(FromCentre(*this, end));
  const double scale = startRadius > 0 ? 1 + t * (endRadius / startRadius - 1) : 1;
  const SineCosine turned = SineCosineOfRadians(sweep * t);
  const auto n = static_cast<std::size_t>(plane.normal);
  ToolTip tip;
  tip[static_cast<std::size_t>(plane.first)] =
      centreFirst + scale * (from.first * turned.cosine - from.second * turned.sine);
  tip[static_cast<std::size_t>(plane.second)] =
      centreSecond + scale * (from.first * turned.sine + from.second * turned.cosine);
  tip[n] = start[n] + t * (end[n] - start[n]);
  return tip;
}

double GCodeArc::Length() const {
  const double radius =
      (::formats::Length(FromCentre(*this, start)) + ::formats::Length(FromCentre(*this, end))) / 2;
  const auto n = static_cast<std::size_t>(plane.normal);
  const double turned = radius * sweep;
  const double climb = end[n] - start[n];
  return std::sqrt(turned * turned + climb * climb);
}

GCodeArc ArcAboutCentre(const ArcPlane& plane, const ToolTip& start, const ToolTip& end,
                        double centreFirst, double centreSecond, bool clockwise, int turns,
                        double millimetre) {
  GCodeArc arc{plane, start, end, centreFirst, centreSecond, 0};
  const double startRadius = Length(FromCentre(arc, start));
  const double endRadius = Length(FromCentre(arc, end));
  const double difference = std::abs(startRadius - endRadius);
  if (!(startRadius > kSamePoint * millimetre)) {
    throw GCodeError("arc whose centre is its start", 0);
  }
  if (!(difference <= kRadiusMismatch * millimetre) ||
      (difference > kRadiusRounding * millimetre &&
       difference > kRadiusShare * std::max(startRadius, endRadius))) {
    throw GCodeError("arc whose radius is " + DecimalText(startRadius) + " at its start and " +
                         DecimalText(endRadius) + " at its end",
                     0);
  }
  arc.sweep = Sweep(arc, clockwise, turns, Coincide(arc, millimetre));
  return arc;
}

GCodeArc ArcOfRadius(const ArcPlane& plane, const ToolTip& start, const ToolTip& end, double radius,
                     bool clockwise, int turns, double millimetre) {
  GCodeArc arc{plane, start, end, 0, 0, 0};
  const InPlane from = FromCentre(arc, start);
  const InPlane to = FromCentre(arc, end);
  const InPlane chord = {to.first - from.first, to.second - from.second};
  const double half = Length(chord) / 2;
  if (Coincide(arc, millimetre)) {
    throw GCodeError("arc with R whose end is its start: it needs I, J, K", 0);
  }
  const double size = std::abs(radius);
  if (half > size + kRadiusRounding * millimetre) {
    throw GCodeError("arc whose ends are further apart than the diameter of its R", 0);
  }
  // Ends a hair further apart than the diameter make half a turn.
  const double height = half < size ? std::sqrt((size - half) * (size + half)) : 0;
  // To the left of the chord for the short counter-clockwise arc and the long clockwise one.
  const double side = clockwise == (radius > 0) ? -height : height;
  arc.centreFirst = (from.first + to.first) / 2 - side * chord.second / (2 * half);
  arc.centreSecond = (from.second + to.second) / 2 + side * chord.first / (2 * half);
  arc.sweep = Sweep(arc, clockwise, turns, false);
  return arc;
}

double ChordsOf(const GCodeArc& arc, double tolerance) {
  const double startRadius = Length(FromCentre(arc, arc.start));
  const double endRadius = Length(FromCentre(arc, arc.end));
  const double angle = std::abs(arc.sweep);
  // A chord of the step s strays by r (1 - cos(s/2)); a radius that changes adds twice its change a
  // radian. The step stays below a quarter turn, however large the tolerance.
  const double radius =
      std::max(startRadius, endRadius) + 2 * std::abs(endRadius - startRadius) / angle;
  const double share = std::min(tolerance / (2 * radius), 0.5);
  const double step = std::min(4 * std::asin(std::sqrt(share)), std::numbers::pi / 2);
  return std::max(1.0, std::ceil(angle / step * (1 - 1e-12)));
}

}  // namespace formats

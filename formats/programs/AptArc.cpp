#include "formats/programs/AptArc.h"

#include <cmath>

#include "formats/programs/GCodeError.h"

namespace formats {
namespace {

double Dot(const ToolAxis& a, const ToolAxis& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

ToolAxis Cross(const ToolAxis& a, const ToolAxis& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

ToolAxis Normalised(const ToolAxis& v) {
  const double length = std::sqrt(Dot(v, v));
  if (!(length > 0) || !std::isfinite(length)) {
    throw GCodeError("CIRCLE whose axis has no direction", 0);
  }
  return {v[0] / length, v[1] / length, v[2] / length};
}

// Coordinate planes keep their own directions, so that their arcs come out to the last bit.
std::array<ToolAxis, 3> FrameAbout(const ToolAxis& axis) {
  const ToolAxis third = Normalised(axis);
  std::size_t least = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::abs(third[i]) < std::abs(third[least])) {
      least = i;
    }
  }
  ToolAxis aside{};
  aside[least] = 1;
  const ToolAxis second = Normalised(Cross(third, aside));
  return {Cross(second, third), second, third};
}

}  // namespace

AptArc::AptArc(const ToolTip& start, const ToolTip& end, const ToolTip& centre,
               const ToolAxis& axis, double millimetre)
    : centre_(centre),
      frame_(FrameAbout(axis)),
      arc_(ArcAboutCentre(kPlaneXY, ToLocal(start), ToLocal(end), 0, 0, false, 1, millimetre)) {}

ToolTip AptArc::ToLocal(const ToolTip& point) const {
  const ToolAxis offset = {point[0] - centre_[0], point[1] - centre_[1], point[2] - centre_[2]};
  return {Dot(offset, frame_[0]), Dot(offset, frame_[1]), Dot(offset, frame_[2])};
}

ToolTip AptArc::At(double t) const {
  const ToolTip local = arc_.At(t);
  ToolTip point = centre_;
  for (std::size_t i = 0; i < 3; ++i) {
    point[i] += local[0] * frame_[0][i] + local[1] * frame_[1][i] + local[2] * frame_[2][i];
  }
  return point;
}

double AptArc::Radius() const {
  return std::sqrt(arc_.start[0] * arc_.start[0] + arc_.start[1] * arc_.start[1]);
}

}  // namespace formats

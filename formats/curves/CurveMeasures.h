#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "formats/MeshMeasures.h"
#include "formats/curves/Curves.h"

namespace formats {

struct CurveMeasures {
  double length = 0;                   // in space
  double area = 0;                     // seen along z: positive when it runs counter-clockwise
  std::optional<std::size_t> outside;  // the curve next around it, by its number from 0
  std::size_t depth = 0;               // curves around it

  bool IsHole() const { return depth % 2 == 1; }
};

struct CurvesMeasures {
  std::vector<CurveMeasures> curves;  // in their order
  std::size_t pointsInCurves = 0;     // a point counts each time that a curve runs through it
  std::size_t nonFinitePoints = 0;
  std::size_t holes = 0;
  double length = 0;
  double area = 0;         // enclosed: outer curves less their holes, whichever way they run
  std::optional<Box> box;  // of the finite points that a curve runs through
};

// Which curve lies in which is said of curves, seen along z, that cross neither themselves nor each
// other; they may touch. Curves with a point that is not finite, and such without any width, count
// as outside all others. Time n log n.
CurvesMeasures MeasureCurves(const Curves& curves);

// The box alone, as above.
std::optional<Box> BoxOf(const Curves& curves);

}  // namespace formats

#include "support/geometry/SweepInputs.h"

#include <algorithm>
#include <cmath>

#include "support/geometry/MeshChecks.h"

namespace support {
namespace {

SweepInput BoxWithPath(const formats::ConvexTool& tool, const formats::Cut& cut) {
  SweepInput input;
  input.stock = Box({0, 0, 0}, {100, 100, 50}, 1);
  input.path.colour = 2;
  input.path.sweepToler = 0.025;
  input.path.tool = tool;
  input.path.cuts.push_back(cut);
  return input;
}

// Rows along x, every other one backwards; visit(x, y) at each stop.
template <typename Visit>
void Zigzag(double low, double high, double stepAlong, double stepOver, Visit&& visit) {
  const auto stops = static_cast<int>(std::lround((high - low) / stepAlong));
  const auto rows = static_cast<int>(std::lround((high - low) / stepOver));
  for (int row = 0; row <= rows; ++row) {
    for (int stop = 0; stop <= stops; ++stop) {
      const int along = row % 2 == 0 ? stop : stops - stop;
      visit(low + stepAlong * along, low + stepOver * row);
    }
  }
}

}  // namespace

SweepInput WavedSurface(double stepAlong, double stepOver, double volumeLeft) {
  formats::Cut cut;
  Zigzag(0, 100, stepAlong, stepOver, [&](double x, double y) {
    const double z = 40 + 5 * std::sin(x / 10) * std::cos(y / 10);
    cut.coordinates.insert(cut.coordinates.end(), {x, y, z});
  });
  SweepInput input = BoxWithPath({.cornerRadius = 5, .lowerTaperAngle = 90}, cut);
  input.volumeLeft = volumeLeft;
  return input;
}

SweepInput SweepInputA() { return WavedSurface(1, 2, 396883.96); }

SweepInput SweepInputB() { return WavedSurface(0.25, 1, 396596.14); }

SweepInput SweepInputC() {
  formats::Cut cut;
  Zigzag(16, 84, 68, 4, [&](double x, double y) {
    cut.coordinates.insert(cut.coordinates.end(), {x, y, 30});
  });
  SweepInput input = BoxWithPath({.flatRadius = 6, .lowerTaperAngle = 90}, cut);
  input.volumeLeft = 372771.79;
  return input;
}

}  // namespace support

#include "kernel/outline/PlaneGrid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_map>

#include "kernel/common/FatalError.h"

namespace kernel {
namespace {

constexpr std::size_t kTellInterval = 1U << 16;  // points

constexpr double kFinest = 0x1p-42;
// The narrowest length whose square and its product with a rounding error are still normal.
constexpr double kLeastDiagonal = 1e-140;

double PowerOfTwoBelow(double value) {
  int exponent = 0;
  std::frexp(value, &exponent);
  return std::ldexp(0.5, exponent);
}

struct PointHash {
  std::size_t operator()(const Point2& point) const {
    const auto x = static_cast<std::uint64_t>(static_cast<std::int64_t>(point.x));
    const auto y = static_cast<std::uint64_t>(static_cast<std::int64_t>(point.y));
    return std::hash<std::uint64_t>()(x * 0x9E3779B97F4A7C15U ^ (y * 0xC2B2AE3D27D4EB4FU >> 7));
  }
};

struct PointEqual {
  bool operator()(const Point2& a, const Point2& b) const { return SamePoint(a, b); }
};

void DropRepeats(Loop& loop) {
  loop.erase(std::unique(loop.begin(), loop.end(), SamePoint), loop.end());
  while (loop.size() > 1 && SamePoint(loop.front(), loop.back())) loop.pop_back();
}

}  // namespace

PlaneGrid::PlaneGrid(const Point2& low, const Point2& high) : m_low(low) {
  const double width = high.x - low.x, height = high.y - low.y;
  const double diagonal = std::sqrt(width * width + height * height);
  if (!std::isfinite(diagonal)) throw FatalError("the surface is too large to measure");
  if ((width > 0 || height > 0) && diagonal < kLeastDiagonal) {
    throw FatalError("the surface is too small to measure");
  }
  const double largest =
      std::max({std::abs(low.x), std::abs(low.y), std::abs(high.x), std::abs(high.y)});
  const double wanted =
      std::max(diagonal * kFinest, largest * std::numeric_limits<double>::epsilon());
  m_cell = wanted > 0 ? PowerOfTwoBelow(wanted) : 1;
}

Point2 PlaneGrid::Snap(const Point2& place) const {
  return {std::round((place.x - m_low.x) / m_cell), std::round((place.y - m_low.y) / m_cell)};
}

Point2 PlaneGrid::Place(const Point2& gridPoint) const {
  return {m_low.x + gridPoint.x * m_cell, m_low.y + gridPoint.y * m_cell};
}

std::vector<Loop> PlacedLoops(const std::vector<Loop>& loops, const PlaneGrid& grid,
                              const std::vector<Point2>& originals,
                              const std::function<void()>& tell) {
  struct Placed {
    Point2 place;
    bool original = false;
  };
  std::size_t looked = 0;
  const auto look = [&] {
    if (++looked % kTellInterval == 0) tell();
  };
  std::unordered_map<Point2, Placed, PointHash, PointEqual> places;
  for (const Loop& loop : loops) {
    for (const Point2& point : loop) {
      look();
      places.insert({point, {grid.Place(point), false}});
    }
  }
  for (const Point2& original : originals) {
    look();
    const auto found = places.find(grid.Snap(original));
    if (found == places.end() || found->second.original) continue;
    found->second = {original, true};
  }
  std::vector<Loop> placed;
  for (const Loop& loop : loops) {
    Loop& back = placed.emplace_back();
    for (const Point2& point : loop) {
      look();
      back.push_back(places.at(point).place);
    }
    // Far from the origin two cells may have one place.
    DropRepeats(back);
    if (back.size() < 3) placed.pop_back();
  }
  return placed;
}

}  // namespace kernel

#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace formats {

struct Curve {
  // Numbers of the points that it runs through, from 0; the last is joined to the first.
  std::vector<std::int32_t> points;
  std::array<std::int32_t, 2> treeFields{};  // of the tree variant; their use is its writer's
};

enum class CurvesVariant { Plain, Tree };

// Closed curves; lengths in the host's units.
struct Curves {
  CurvesVariant variant = CurvesVariant::Plain;
  std::vector<std::array<double, 3>> points;  // some perhaps in no curve
  std::int32_t segments = 0;  // that the file's writer has received, in a curve or not
  std::vector<Curve> curves;
};

}  // namespace formats

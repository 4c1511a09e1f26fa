#pragma once

#include <optional>

#include "kernel/offset/LocalOffset.h"

namespace kernel {

struct OffsetLimits {
  double tolerance = 0;  // of the surface
  double exact = 0;      // closer than this is on it
  double reach = 0;      // the furthest that a vertex may be moved
};

// The point of the exact surface that suits `point`, on a crease where that is near. None when
// there is none in reach.
std::optional<Vec3> PlaceOnOffset(const LocalOffset& solid, const Vec3& point,
                                  const OffsetLimits& limits);

struct PlaceAlongEdge {
  Vec3 at;
  bool isCrease = false;
};

// Where an edge that is off the surface should be split: above its middle or, where its ends lie on
// pieces that meet in a crease between them, on the crease, whichever leaves less. None when there
// is no such point near.
std::optional<PlaceAlongEdge> PlaceOnEdge(const LocalOffset& solid, const Vec3& from,
                                          const Vec3& to, const OffsetLimits& limits);

// Only above its middle.
std::optional<PlaceAlongEdge> PlaceAboveMiddle(const LocalOffset& solid, const Vec3& from,
                                               const Vec3& to, const OffsetLimits& limits);

}  // namespace kernel

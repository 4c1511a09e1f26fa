#pragma once

#include <optional>

#include "kernel/sweep/LocalSolid.h"

namespace kernel {

// The planes of the stock on which the point lies to within `exact`, three at most.
std::vector<Generator> PlanesUnder(const LocalSolid& solid, const Vec3& point, double exact);

struct SettleGoal {
  std::vector<Generator> planes;  // of the stock, on which the point is to stay
  double reach = 0;               // the furthest that it may go
  double exact = 0;               // closer than this to a surface it counts as on it
};

// The point of the exact surface that suits `point`: out of all tools, in the stock, on the edge or
// in the corner where only that does. None when it is out of reach or none is found.
std::optional<Vec3> SettlePoint(const LocalSolid& solid, const Vec3& point, const SettleGoal& goal);

// The same, first going along `outward` (a unit vector out of the mesh, or into it where the point
// is outside the solid) until the surface is met: what the mesh has missed stands above it.
std::optional<Vec3> SettleAlong(const LocalSolid& solid, const Vec3& point, const Vec3& outward,
                                const SettleGoal& goal);

}  // namespace kernel

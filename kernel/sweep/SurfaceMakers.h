#pragma once

#include <cstdint>

#include "kernel/sweep/DexelModel.h"

namespace kernel {

// A plane that touches the surface of a solid.
struct TangentPlane {
  Vec3 point;
  Vec3 normal;  // unit, out of the solid
};

// Finds colour and exact surface again from a generator. May be asked on several threads.
class SurfaceMakers {
 public:
  SurfaceMakers() = default;
  SurfaceMakers(const SurfaceMakers&) = delete;
  SurfaceMakers& operator=(const SurfaceMakers&) = delete;
  virtual ~SurfaceMakers() = default;

  virtual std::uint8_t ColourOf(Generator maker) const = 0;

  // At a point on the maker's surface.
  virtual TangentPlane TangentAt(Generator maker, const Vec3& point) const = 0;

  // Where the maker's surface comes nearest to a point.
  virtual TangentPlane TangentNearest(Generator maker, const Vec3& point) const = 0;

  // The tangent plane where the smooth piece of surface that `known` touches comes nearest to
  // `target`; `known` itself when the piece ends before it gets there.
  TangentPlane TangentTowards(Generator maker, const TangentPlane& known, const Vec3& target) const;
};

}  // namespace kernel

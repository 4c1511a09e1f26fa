#pragma once

#include <cstdint>
#include <vector>

#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// What lies nearest to a point: a body that is taken away (a tool on its move) or a facet of the
// stock.
struct NearestMaker {
  double distance = 0;  // of the body's or the stock's surface; below 0 inside it
  Generator maker;
  TangentPlane plane;  // there, its normal out of what is left of the solid
};

// How far a point lies off the exact surface of what is left: above 0 outside (in the air or in a
// body that is taken away), below 0 in the solid. Exact near the surface but for places in two such
// bodies at once, where the true distance may be greater.
struct OffSurface {
  double distance = 0;
  Generator maker;  // of the surface that decides it
};

// The exact solid in some place: a stock less bodies that are taken away.
class LocalSolid {
 public:
  LocalSolid() = default;
  LocalSolid(const LocalSolid&) = delete;
  LocalSolid& operator=(const LocalSolid&) = delete;
  virtual ~LocalSolid() = default;

  virtual const SurfaceMakers& Makers() const = 0;

  virtual OffSurface HowFarOff(const Vec3& point) const = 0;

  // Facets of the stock with different planes on which the point lies to within `reach`.
  virtual void PlanesAt(const Vec3& point, double reach, std::vector<Generator>& planes) const = 0;

  // Whether a surface in this colour comes within `reach` of the point.
  virtual bool HasColourNear(const Vec3& point, std::uint8_t colour, double reach) const = 0;

  // The maker seen from a point: its distance, and its tangent plane where it comes nearest.
  NearestMaker From(Generator maker, const Vec3& point) const;
};

}  // namespace kernel

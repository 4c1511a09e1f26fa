#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// What lies nearest to a point: a move's surface or a facet of the stock.
struct NearestMaker {
  double distance = 0;  // of the tool's or the stock's surface; below 0 inside it
  Generator maker;
  TangentPlane plane;  // there, its normal out of what is left of the stock
};

// The exact solid (the stock less all moves) in a box: only the moves and stock facets that can
// matter there are looked at. Keeps references to what it is made from.
class LocalSolid {
 public:
  // `moves` and `facets`: at least those that come into `box`, in ascending order.
  LocalSolid(const SurfaceMakers& makers, std::span<const std::uint32_t> moves,
             std::span<const std::uint32_t> facets, const Box3& box);

  // The same solid in a smaller box inside that of `wider`.
  LocalSolid(const LocalSolid& wider, const Box3& box);

  // The tool that `point` is deepest in, or, outside all, nearest to; the later of equals. None
  // when no tool is near.
  std::optional<NearestMaker> NearestTool(const Vec3& point) const;

  // None when no facet is near; the point is inside the stock then.
  std::optional<NearestMaker> NearestStock(const Vec3& point) const;

  // Facets of the stock with different planes on which the point lies to within `reach`.
  void PlanesAt(const Vec3& point, double reach, std::vector<Generator>& planes) const;

  // Whether a surface in this colour comes within `reach` of the point.
  bool HasColourNear(const Vec3& point, std::uint8_t colour, double reach) const;

  // The maker seen from a point: its distance, and its tangent plane where it comes nearest.
  NearestMaker From(Generator maker, const Vec3& point) const;

 private:
  struct Candidate {
    std::uint32_t move;
    SweptTool swept;
  };

  // A move's distance seen from the box's centre. The distance to a convex body is a convex
  // function, so its tangent there bounds it from below everywhere.
  struct Bound {
    double distance;
    Vec3 slope;
    double At(const Vec3& step) const { return distance + Dot(slope, step); }
  };

  void Keep(const std::vector<Candidate>& candidates);
  void KeepFacets(std::span<const std::uint32_t> facets);

  const SurfaceMakers& m_makers;
  Box3 m_box;
  Vec3 m_centre;
  std::vector<Candidate> m_candidates;
  std::vector<Bound> m_bounds;  // of each candidate
  std::vector<std::uint32_t> m_facets;
};

}  // namespace kernel

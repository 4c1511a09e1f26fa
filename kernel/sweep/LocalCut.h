#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "kernel/common/Box3.h"
#include "kernel/sweep/CutMakers.h"
#include "kernel/sweep/LocalSolid.h"

namespace kernel {

// The exact solid (the stock less all moves) in a box: only the moves and stock facets that can
// matter there are looked at. Keeps references to what it is made from.
class LocalCut final : public LocalSolid {
 public:
  // `moves` and `facets`: at least those that come into `box`, in ascending order.
  LocalCut(const CutMakers& makers, std::span<const std::uint32_t> moves,
           std::span<const std::uint32_t> facets, const Box3& box);

  // The same solid in a smaller box inside that of `wider`.
  LocalCut(const LocalCut& wider, const Box3& box);

  const SurfaceMakers& Makers() const override { return m_makers; }
  OffSurface HowFarOff(const Vec3& point) const override;
  void PlanesAt(const Vec3& point, double reach, std::vector<Generator>& planes) const override;
  bool HasColourNear(const Vec3& point, std::uint8_t colour, double reach) const override;

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

  // The tool that `point` is deepest in, or, outside all, nearest to; the later of equals. None
  // when no tool is near.
  std::optional<NearestMaker> NearestTool(const Vec3& point) const;
  // None when no facet is near; the point is inside the stock then.
  std::optional<NearestMaker> NearestStock(const Vec3& point) const;
  void Keep(const std::vector<Candidate>& candidates);
  void KeepFacets(std::span<const std::uint32_t> facets);

  const CutMakers& m_makers;
  Box3 m_box;
  Vec3 m_centre;
  std::vector<Candidate> m_candidates;
  std::vector<Bound> m_bounds;  // of each candidate
  std::vector<std::uint32_t> m_facets;
};

}  // namespace kernel

#pragma once

#include <array>
#include <optional>

#include "kernel/common/Vec3.h"

namespace kernel {

// How spinning about the x axis folds a facet. Within the facet the radius is least, at each x, on
// one straight line, the fold; on the two sides of it the facet keeps or changes its sense when it
// is spun.
class FoldedFacet {
 public:
  explicit FoldedFacet(const std::array<Vec3, 3>& corners);

  // 1 where the facet keeps its sense, -1 where it changes it, at the start and the end of the side
  // from that corner to the next; both 0 when the facet covers nothing.
  int SenseAtStart(std::size_t side) const;
  int SenseAtEnd(std::size_t side) const;

  // The share of the way from corner a to corner b at which the sense changes between them.
  double ChangeBetween(std::size_t a, std::size_t b) const {
    return m_sense[a] / (m_sense[a] - m_sense[b]);
  }

  // Where a fold that divides the facet meets its border: at a corner, or on the side that starts
  // there. The part that keeps its sense is on the left from `from` to `to`.
  struct BorderPlace {
    std::size_t corner = 0;
    bool onSide = false;
  };
  struct Fold {
    BorderPlace from, to;
  };
  std::optional<Fold> FoldAcross() const;

  // The signed distance from the axis, along the facet's normal, of a point of the fold, times a
  // factor that is the same for the whole facet.
  double HeightAt(const Vec3& place) const { return place.y * m_normal.y + place.z * m_normal.z; }

 private:
  int Sign(std::size_t i) const { return (m_sense[i] > 0) - (m_sense[i] < 0); }

  Vec3 m_normal;
  std::array<double, 3> m_sense;  // linear over the facet, 0 on the fold
};

}  // namespace kernel

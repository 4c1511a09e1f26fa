#pragma once

#include "kernel/compare/StockTree.h"
#include "kernel/sweep/LocalSolid.h"

namespace kernel {

// All that is left of space, or of one side of a closed mesh, when the band of points within a
// radius of the mesh is taken away. Each facet takes away a body of its own: the points within the
// radius of it, a rounded triangle, which is convex and smooth. The surface of what is left is made
// of planes, cylinders and balls, and is sharp only where two such bodies meet.
class OffsetField {
 public:
  // Which part of space is left: for an open mesh everything, else one side of it.
  enum class Side { kBoth, kOutside, kInside };

  // Keeps a reference to the tree. `radius` above 0. `scale`: the greatest length or coordinate
  // about, to which rounding is in proportion.
  OffsetField(const StockTree& tree, Side side, double radius, double scale)
      : m_tree(tree), m_side(side), m_radius(radius), m_rounding(4e-16 * scale) {}

  struct Off {
    double distance = 0;  // above 0 outside what is left; not above the true distance
    std::uint32_t slot = 0;
  };
  // `guess` as in StockTree::FindNearest.
  Off At(const Vec3& point, std::uint32_t guess) const;

  // The body of the facet in a slot, seen from a point. Its normal points into the body.
  NearestMaker From(std::uint32_t slot, const Vec3& point) const;

  // The distance of one facet's body and how it changes from place to place.
  struct Slope {
    double distance;
    Vec3 gradient;
  };
  Slope SlopeOf(std::uint32_t slot, const Vec3& point) const;

  // Whether the point, which is off the mesh, lies on the side that is left.
  bool IsOnSide(const Vec3& point) const {
    return m_side == Side::kBoth || m_tree.IsInside(point) == (m_side == Side::kInside);
  }

  double Radius() const { return m_radius; }
  // What a distance may be off by rounding.
  double Rounding() const { return m_rounding; }
  std::size_t SlotCount() const { return m_tree.SlotCount(); }
  std::uint32_t FacetOf(std::uint32_t slot) const { return m_tree.FacetOf(slot); }
  const Corners& CornersOf(std::uint32_t slot) const { return m_tree.CornersOf(slot); }
  // Out of the facet on the sides that are left: one, or for Side::kBoth two.
  std::vector<Vec3> SideNormals(std::uint32_t slot) const;

 private:
  // Out of the facet on the side that is left.
  Vec3 SideNormal(std::uint32_t slot) const {
    const Vec3 normal = m_tree.FrameOf(slot).Normal();
    return m_side == Side::kInside ? -normal : normal;
  }

  const StockTree& m_tree;
  Side m_side;
  double m_radius, m_rounding;
};

}  // namespace kernel

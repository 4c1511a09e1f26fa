#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/compare/FacetBoxes.h"
#include "kernel/compare/FacetLeaf.h"
#include "kernel/compare/TriangleFrame.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// What a comparison asks of the stock: the nearest point of its surface, whether a point lies
// inside, whether a triangle comes near. Queries may run side by side.
class StockTree {
 public:
  // The mesh is closed and has a facet; facets may have no area. It is not needed afterwards.
  // `watch` hears the share that is done and may throw to stop.
  StockTree(const StockMesh& mesh, const std::function<void(double)>& watch);

  struct Nearest {
    std::uint32_t slot = 0;  // the nearest facet's place in the tree
    double square = 0;       // of the distance
  };
  // `guess` is any slot; one that is near saves work. Of facets equally near, which one is found
  // depends on the guess; the distance may then differ in its last bits.
  Nearest FindNearest(const Vec3& point, std::uint32_t guess) const;

  // Whether the surface winds around the point once or more. Decided exactly, along a ray in the
  // direction of an axis; a point on the surface may count as either.
  bool IsInside(const Vec3& point) const;

  // Whether some point of the triangle is at most `limit` from the surface. `limit` is to be well
  // above what rounding does to the coordinates.
  bool ComesWithin(const Corners& triangle, double limit) const;

  std::size_t SlotCount() const { return m_frames.size(); }
  // The mesh's facet in a slot.
  std::uint32_t FacetOf(std::uint32_t slot) const { return m_boxes.Facets()[slot]; }
  const TriangleFrame& FrameOf(std::uint32_t slot) const { return m_frames[slot]; }
  const Corners& CornersOf(std::uint32_t slot) const { return m_corners[slot]; }

 private:
  // More than any way down the tree leaves open.
  static constexpr std::size_t kStack = 512;

  void FillLeaf(const StockMesh& mesh, std::size_t number);

  FacetBoxes m_boxes;
  std::vector<Corners> m_corners;  // by slot, as are the frames
  std::vector<TriangleFrame> m_frames;
  std::vector<FacetLeaf> m_leaves;  // as the tree numbers them
};

}  // namespace kernel

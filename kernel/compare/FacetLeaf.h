#pragma once

#include <cstdint>

#include "kernel/compare/FacetBoxes.h"
#include "kernel/compare/TriangleFrame.h"

namespace kernel {

// The facets of a leaf side by side, in single precision and in the coordinates of the tree, so
// that their distances from a point come from a few vector instructions. They are only good enough
// to rule facets out.
struct alignas(64) FacetLeaf {
  static constexpr std::size_t kWidth = FacetBoxes::kLeafSize;
  // No squared distance comes from a distance that is further than this from the exact one, in the
  // tree's coordinates, times the largest coordinate of the place or 1.
  static constexpr double kError = 4e-6;

  // By axis, then by facet: a frame (see TriangleFrame) and the normal that completes it.
  float origin[3][kWidth], along[3][kWidth], across[3][kWidth], normal[3][kWidth];
  float length[kWidth], apex[kWidth], height[kWidth];
  // One over the squares of the sides from the origin and from the end to the third corner.
  float overLeft[kWidth], overRight[kWidth];

  // A place that no facet has yet is far away.
  FacetLeaf();
  void Set(std::size_t i, const FacetBoxes& boxes, const TriangleFrame& frame);

  // The squared distances of all facets.
  void SquaredDistances(const FacetBoxes::Place& place, float* squares) const;
};

}  // namespace kernel

#include "kernel/sweep/MergePlanes.h"

#include "kernel/sweep/MergeFlat.h"
#include "kernel/sweep/RemoveSlivers.h"

namespace kernel {
namespace {

// Shares of the diagonal.
constexpr double kFlatness = 1e-11;
constexpr double kLeastHeight = 1e-9;

}  // namespace

MergedPlanes MergePlanes(HalfEdgeMesh mesh, double diagonal,
                         const std::function<void(double)>& watch) {
  const double least = kLeastHeight * diagonal;
  const std::size_t slivers = RemoveSlivers(mesh, least);
  MergeFlat(mesh, kFlatness * diagonal, least, watch);
  return {mesh.Release(), slivers};
}

}  // namespace kernel

#include "kernel/heal/RemoveCrossings.h"

#include "kernel/heal/FindCrossings.h"

namespace kernel {

std::size_t RemoveCrossingFacets(LinkedMesh& linked, double, StageProgress& progress) {
  progress.Begin("Scanning for crossing facets");
  const CrossingPairs pairs =
      FindCrossings(linked.mesh, false, [&](double share) { progress.Advance(share); });
  progress.End();
  return pairs.size();
}

}  // namespace kernel

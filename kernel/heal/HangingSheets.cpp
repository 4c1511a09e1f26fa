#include "kernel/heal/HangingSheets.h"

#include <algorithm>

#include "kernel/heal/MeshEdges.h"

namespace kernel {

std::size_t RemoveHangingSheets(LinkedMesh& linked) {
  using Index = LinkedMesh::Index;
  if (std::find(linked.twin.begin(), linked.twin.end(), SurfaceMesh::kNone) == linked.twin.end()) {
    return 0;
  }
  const std::vector<Index> bodies = linked.Bodies();
  std::vector<bool> isOpen(linked.mesh.facets.size(), false), hangs(isOpen);
  for (Index side = 0; side < linked.twin.size(); ++side) {
    if (linked.IsOpen(side)) isOpen[bodies[side / 3]] = true;
  }
  const MeshEdges edges(linked.mesh);
  edges.ForEach([&](Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    const bool anyClosed = std::any_of(
        begin, end, [&](const MeshEdges::Side& side) { return !isOpen[bodies[side.Facet()]]; });
    for (const MeshEdges::Side* side = begin; side != end && anyClosed; ++side) {
      if (isOpen[bodies[side->Facet()]]) hangs[bodies[side->Facet()]] = true;
    }
  });
  std::vector<bool> removed(linked.mesh.facets.size());
  for (std::size_t f = 0; f < removed.size(); ++f) removed[f] = hangs[bodies[f]];
  const auto count = std::count(removed.begin(), removed.end(), true);
  if (count > 0) linked.Erase(removed);
  return static_cast<std::size_t>(count);
}

}  // namespace kernel

#include "kernel/heal/HoleLoops.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kernel {
namespace {

using Index = LinkedMesh::Index;
using Loop = std::vector<Index>;

// The open side that ends at the origin of `side`, in the same fan of facets around that vertex.
Index SideBefore(const LinkedMesh& linked, Index side) {
  Index before = SurfaceMesh::Previous(side);
  while (!linked.IsOpen(before)) before = SurfaceMesh::Previous(linked.twin[before]);
  return before;
}

// Cuts a loop where it comes to a vertex again.
void AddSimpleLoops(LinkedMesh& linked, const Loop& loop, std::vector<Loop>& loops) {
  Loop path;
  std::map<Index, std::size_t> place;  // of the path's sides, by target
  for (const Index side : loop) {
    place[linked.mesh.Target(side)] = path.size();
    path.push_back(side);
    const auto found = place.find(linked.mesh.Origin(side));
    if (found == place.end()) continue;
    const auto begin = path.begin() + static_cast<std::ptrdiff_t>(found->second);
    Loop simple(begin, path.end());
    for (const Index cut : simple) place.erase(linked.mesh.Target(cut));
    path.erase(begin, path.end());
    if (simple.size() == 2) {
      linked.Link(simple[0], simple[1]);
    } else {
      loops.push_back(std::move(simple));
    }
  }
}

}  // namespace

std::vector<Loop> HoleLoops(LinkedMesh& linked) {
  std::vector<Loop> loops;
  std::vector<bool> isDone(linked.twin.size(), false);
  std::vector<Index> open;
  for (Index side = 0; side < linked.twin.size(); ++side) {
    if (linked.IsOpen(side)) open.push_back(side);
  }
  std::vector<Loop> whole;
  for (const Index first : open) {
    if (isDone[first]) continue;
    Loop loop;
    for (Index side = first; !isDone[side]; side = SideBefore(linked, side)) {
      isDone[side] = true;
      loop.push_back(side);
    }
    whole.push_back(std::move(loop));
  }
  for (const Loop& loop : whole) AddSimpleLoops(linked, loop, loops);
  return loops;
}

}  // namespace kernel

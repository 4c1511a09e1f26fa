#include "kernel/heal/LinkedMesh.h"

#include <utility>

#include "kernel/heal/UnionFind.h"

namespace kernel {

std::vector<LinkedMesh::Index> LinkedMesh::Bodies() const {
  UnionFind bodies(mesh.facets.size());
  for (Index side = 0; side < twin.size(); ++side) {
    if (!IsOpen(side) && twin[side] > side) bodies.Join(side / 3, twin[side] / 3);
  }
  std::vector<Index> number(mesh.facets.size());
  Index count = 0;
  for (Index f = 0; f < number.size(); ++f) {
    const Index first = bodies.Root(f);
    number[f] = first == f ? count++ : number[first];
  }
  return number;
}

void LinkedMesh::Erase(const std::vector<bool>& removed) {
  std::vector<Index> number(mesh.facets.size(), SurfaceMesh::kNone);
  Index kept = 0;
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    if (!removed[f]) number[f] = kept++;
  }
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    if (removed[f]) continue;
    mesh.facets[number[f]] = mesh.facets[f];
    for (std::size_t i = 0; i < 3; ++i) {
      const Index other = twin[3 * f + i];
      const bool open = other == SurfaceMesh::kNone || removed[other / 3];
      twin[3 * number[f] + i] = open ? SurfaceMesh::kNone : 3 * number[other / 3] + other % 3;
    }
  }
  mesh.facets.resize(kept);
  twin.resize(3 * std::size_t{kept});
}

void LinkedMesh::TurnOver(const std::vector<bool>& turned) {
  // Sides 0 and 2 of a facet change places when its corners 1 and 2 do.
  const auto moved = [&](Index side) {
    return turned[side / 3] ? side - side % 3 + 2 - side % 3 : side;
  };
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    if (!turned[f]) continue;
    std::swap(mesh.facets[f].vertices[1], mesh.facets[f].vertices[2]);
    std::swap(twin[3 * f], twin[3 * f + 2]);
  }
  for (Index& side : twin) {
    if (side != SurfaceMesh::kNone) side = moved(side);
  }
}

}  // namespace kernel

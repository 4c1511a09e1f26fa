#include "kernel/heal/NumberFans.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "kernel/heal/MeshEdges.h"

namespace kernel {
namespace {

using Index = LinkedMesh::Index;

// Calls visit(corner) for the corners of the fan that the corner at the start of `side` is in.
// Corner 3 f + i is where side 3 f + i starts.
template <class Visit>
void ForEachInFan(const LinkedMesh& linked, Index side, const Visit& visit) {
  Index at = side;
  do {
    visit(at);
    at = linked.twin[SurfaceMesh::Previous(at)];
    if (at == side) return;
  } while (at != SurfaceMesh::kNone);
  for (at = linked.twin[side]; at != SurfaceMesh::kNone; at = linked.twin[at]) {
    at = SurfaceMesh::Next(at);
    visit(at);
  }
}

void RenumberFans(LinkedMesh& linked) {
  SurfaceMesh& mesh = linked.mesh;
  std::vector<Index> fanOfCorner(linked.twin.size(), SurfaceMesh::kNone);
  std::vector<std::pair<Index, Index>> fans;  // vertex, number
  for (Index corner = 0; corner < linked.twin.size(); ++corner) {
    if (fanOfCorner[corner] != SurfaceMesh::kNone) continue;
    const auto fan = static_cast<Index>(fans.size());
    fans.emplace_back(mesh.Origin(corner), fan);
    ForEachInFan(linked, corner, [&](Index c) { fanOfCorner[c] = fan; });
  }
  std::sort(fans.begin(), fans.end());
  std::vector<Vec3> vertices;
  vertices.reserve(fans.size());
  std::vector<Index> number(fans.size());
  for (const auto& [vertex, fan] : fans) {
    number[fan] = static_cast<Index>(vertices.size());
    vertices.push_back(mesh.vertices[vertex]);
  }
  mesh.vertices = std::move(vertices);
  for (std::size_t corner = 0; corner < fanOfCorner.size(); ++corner) {
    mesh.facets[corner / 3].vertices[corner % 3] = number[fanOfCorner[corner]];
  }
}

// Splits the linked sides and their facets at a new vertex in the middle.
void SplitEdge(LinkedMesh& linked, Index side) {
  SurfaceMesh& mesh = linked.mesh;
  const Index other = linked.twin[side];
  const auto middle = static_cast<Index>(mesh.vertices.size());
  const Vec3& from = mesh.vertices[mesh.Origin(side)];
  mesh.vertices.push_back(from + 0.5 * (mesh.vertices[mesh.Target(side)] - from));
  // Each facet keeps the half at its side's start; the halves at the targets become new facets.
  const auto cut = [&](Index s) {
    const auto added = static_cast<Index>(mesh.facets.size());
    const Index next = SurfaceMesh::Next(s);
    mesh.facets.push_back(
        {{middle, mesh.Origin(next), mesh.Target(next)}, mesh.facets[s / 3].colour});
    linked.twin.resize(3 * std::size_t{added} + 3, SurfaceMesh::kNone);
    if (!linked.IsOpen(next)) linked.Link(3 * added + 1, linked.twin[next]);
    mesh.facets[next / 3].vertices[next % 3] = middle;
    linked.Link(3 * added + 2, next);
    return 3 * added;
  };
  const Index half = cut(side);
  const Index otherHalf = cut(other);
  linked.Link(side, otherHalf);
  linked.Link(other, half);
}

void SplitCrowdedEdges(LinkedMesh& linked) {
  std::vector<Index> crowded;  // one side of each link that must give way
  const MeshEdges edges(linked.mesh);
  edges.ForEach([&](Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    if (end - begin <= 2) return;
    for (const MeshEdges::Side* side = begin + 1; side != end; ++side) {
      const Index other = linked.twin[side->Number()];
      if (!side->IsDown() && other != SurfaceMesh::kNone) crowded.push_back(side->Number());
    }
  });
  for (const Index side : crowded) SplitEdge(linked, side);
}

}  // namespace

void NumberFans(LinkedMesh& linked) {
  RenumberFans(linked);
  SplitCrowdedEdges(linked);
}

}  // namespace kernel

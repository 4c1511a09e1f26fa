#include "kernel/heal/CleanFacets.h"

#include <algorithm>
#include <array>
#include <utility>

#include "kernel/heal/UnionFind.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

struct Key {
  std::array<Index, 3> vertices;  // ascending
  bool odd;                       // which way round the facet runs through them
  Index facet;

  bool SameVertices(const Key& other) const { return vertices == other.vertices; }
  bool operator<(const Key& other) const {
    if (vertices != other.vertices) return vertices < other.vertices;
    return facet < other.facet;
  }
};

Key KeyOf(const SurfaceMesh& mesh, Index facet) {
  std::array<Index, 3> v = mesh.facets[facet].vertices;
  bool odd = false;
  for (const auto& [i, j] : {std::pair{0, 1}, {1, 2}, {0, 1}}) {
    Index& low = v[static_cast<std::size_t>(i)];
    Index& high = v[static_cast<std::size_t>(j)];
    if (low <= high) continue;
    std::swap(low, high);
    odd = !odd;
  }
  return {v, odd, facet};
}

// Few facets share all their vertices with another: these are picked out at the edge of their two
// lower vertices before anything is sorted.
std::vector<Key> DoubledFacets(const SurfaceMesh& mesh, const MeshEdges& edges) {
  std::vector<Index> candidates;
  edges.ForEach([&](Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    for (const MeshEdges::Side* a = begin; a != end; ++a) {
      const Index apexOfA = mesh.Origin(SurfaceMesh::Previous(a->Number()));
      if (apexOfA < begin->Upper()) continue;
      for (const MeshEdges::Side* b = begin; b != end; ++b) {
        if (a == b || mesh.Origin(SurfaceMesh::Previous(b->Number())) != apexOfA) continue;
        candidates.push_back(a->Facet());
        break;
      }
    }
  });
  std::vector<Key> keys;
  keys.reserve(candidates.size());
  for (const Index facet : candidates) keys.push_back(KeyOf(mesh, facet));
  std::sort(keys.begin(), keys.end());
  return keys;
}

// Facets that face the same way as an earlier one with the same vertices are marked; of the rest,
// the pairs that face each other are returned.
std::vector<std::pair<Index, Index>> MarkRepeated(const std::vector<Key>& keys,
                                                  std::vector<bool>& removed) {
  std::vector<std::pair<Index, Index>> opposite;
  for (std::size_t begin = 0, end = 0; begin < keys.size(); begin = end) {
    std::array<Index, 2> first = {SurfaceMesh::kNone, SurfaceMesh::kNone};
    while (end < keys.size() && keys[end].SameVertices(keys[begin])) {
      Index& earlier = first[keys[end].odd ? 1 : 0];
      if (earlier == SurfaceMesh::kNone) {
        earlier = keys[end].facet;
      } else {
        removed[keys[end].facet] = true;
      }
      ++end;
    }
    if (first[0] == SurfaceMesh::kNone || first[1] == SurfaceMesh::kNone) continue;
    opposite.push_back(std::minmax(first[0], first[1]));
  }
  return opposite;
}

void EraseMarked(SurfaceMesh& mesh, const std::vector<bool>& removed) {
  std::size_t kept = 0;
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    if (!removed[f]) mesh.facets[kept++] = mesh.facets[f];
  }
  mesh.facets.resize(kept);
}

// Marks the later facet of each pair in a region that no touching bodies explain.
void MarkUnexplained(const SurfaceMesh& mesh, const MeshEdges& edges,
                     const std::vector<std::pair<Index, Index>>& opposite,
                     std::vector<bool>& removed) {
  std::vector<bool> isDoubled(mesh.facets.size(), false);
  for (const auto& [first, second] : opposite) isDoubled[first] = isDoubled[second] = true;
  UnionFind regions(mesh.facets.size());
  for (const auto& [first, second] : opposite) regions.Join(first, second);
  struct Border {
    Index facet;
    std::ptrdiff_t singles;
  };
  std::vector<Border> borders;
  edges.ForEach([&](Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    Index doubled = SurfaceMesh::kNone;
    std::ptrdiff_t singles = 0, all = 0;
    for (const MeshEdges::Side* side = begin; side != end; ++side) {
      if (removed[side->Facet()]) continue;
      ++all;
      if (!isDoubled[side->Facet()]) {
        ++singles;
      } else if (doubled == SurfaceMesh::kNone) {
        doubled = side->Facet();
      } else {
        regions.Join(doubled, side->Facet());
      }
    }
    const bool isInside = singles == 0 && all >= 4;
    if (doubled != SurfaceMesh::kNone && !isInside) borders.push_back({doubled, singles});
  });
  std::vector<bool> isBordered(mesh.facets.size(), false), isUnexplained(mesh.facets.size(), false);
  for (const Border& border : borders) {
    isBordered[regions.Root(border.facet)] = true;
    if (border.singles == 0 || border.singles % 2 != 0) {
      isUnexplained[regions.Root(border.facet)] = true;
    }
  }
  for (const auto& [first, second] : opposite) {
    const Index region = regions.Root(first);
    if (!isBordered[region] || isUnexplained[region]) removed[second] = true;
  }
}

}  // namespace

std::vector<bool> RemoveSliverFacets(SurfaceMesh& mesh, double least) {
  std::vector<bool> corners;
  std::erase_if(mesh.facets, [&](const SurfaceMesh::Facet& facet) {
    if (!facet.RepeatsVertex() && mesh.Height(facet) >= least) return false;
    corners.resize(mesh.vertices.size());
    for (const Index vertex : facet.vertices) corners[vertex] = true;
    return true;
  });
  return corners;
}

std::size_t RemoveDuplicateFacets(SurfaceMesh& mesh, const MeshEdges& edges) {
  const std::vector<Key> keys = DoubledFacets(mesh, edges);
  if (keys.empty()) return 0;
  const std::size_t before = mesh.facets.size();
  std::vector<bool> removed(before, false);
  const std::vector<std::pair<Index, Index>> opposite = MarkRepeated(keys, removed);
  if (!opposite.empty()) MarkUnexplained(mesh, edges, opposite, removed);
  EraseMarked(mesh, removed);
  return before - mesh.facets.size();
}

}  // namespace kernel

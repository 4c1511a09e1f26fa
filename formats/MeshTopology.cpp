// Edges are found by counting sort: every side of a facet goes into the bucket of its lower vertex
// number, and a bucket holds so few sides that sorting it by the upper number costs next to
// nothing.
#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

#include "formats/MeshMeasures.h"
#include "formats/UnionFind.h"
#include "formats/WindingSets.h"

namespace formats {
namespace {

// A facet's side from corner `corner` to the next one.
struct Side {
  std::uint32_t upperVertexAndWay;  // twice the higher vertex number, plus 1 when run downwards
  std::uint32_t corner;             // three times the facet's number, plus the corner's

  std::uint32_t UpperVertex() const { return upperVertexAndWay >> 1; }
  bool operator<(const Side& other) const {
    if (upperVertexAndWay != other.upperVertexAndWay) {
      return upperVertexAndWay < other.upperVertexAndWay;
    }
    return corner < other.corner;
  }
};

std::uint32_t NextCorner(std::uint32_t corner) { return corner % 3 == 2 ? corner - 2 : corner + 1; }

bool RepeatsVertex(const Facet& facet) {
  const auto& v = facet.vertices;
  return v[0] == v[1] || v[1] == v[2] || v[2] == v[0];
}

class Analysis {
 public:
  explicit Analysis(const Mesh& mesh)
      : mesh_(mesh),
        facets_(mesh.facets.size()),
        windings_(mesh.facets.size()),
        corners_(3 * mesh.facets.size()) {}

  MeshTopology Run() {
    CountVertexUse();
    SortSidesIntoBuckets();
    for (std::size_t v = 0; v < mesh_.vertices.size(); ++v) {
      ReadBucket(sides_.begin() + static_cast<std::ptrdiff_t>(bucketStart_[v]),
                 sides_.begin() + static_cast<std::ptrdiff_t>(bucketStart_[v + 1]));
    }
    Conclude();
    return topology_;
  }

 private:
  template <typename Visit>
  void ForEachSide(Visit visit) const {
    for (std::size_t f = 0; f < mesh_.facets.size(); ++f) {
      if (RepeatsVertex(mesh_.facets[f])) continue;
      for (std::size_t i = 0; i < 3; ++i) {
        const auto from = static_cast<std::uint32_t>(mesh_.facets[f].vertices[i]);
        const auto to = static_cast<std::uint32_t>(mesh_.facets[f].vertices[(i + 1) % 3]);
        const std::uint32_t way = from > to ? 1 : 0;
        visit(std::min(from, to),
              Side{2 * std::max(from, to) + way, static_cast<std::uint32_t>(3 * f + i)});
      }
    }
  }

  void CountVertexUse() {
    std::vector<bool> used(mesh_.vertices.size(), false);
    for (const Facet& facet : mesh_.facets) {
      for (const std::int32_t vertex : facet.vertices)
        used[static_cast<std::size_t>(vertex)] = true;
      if (RepeatsVertex(facet)) ++topology_.repeatedVertexFacets;
    }
    topology_.unusedVertices =
        static_cast<std::size_t>(std::count(used.begin(), used.end(), false));
  }

  void SortSidesIntoBuckets() {
    bucketStart_.assign(mesh_.vertices.size() + 1, 0);
    ForEachSide([this](std::uint32_t lower, Side) { ++bucketStart_[lower + 1]; });
    std::partial_sum(bucketStart_.begin(), bucketStart_.end(), bucketStart_.begin());
    sides_.resize(bucketStart_.back());
    std::vector<std::size_t> next(bucketStart_.begin(), bucketStart_.end() - 1);
    ForEachSide([this, &next](std::uint32_t lower, Side side) { sides_[next[lower]++] = side; });
  }

  using SideIterator = std::vector<Side>::iterator;

  void ReadBucket(SideIterator begin, SideIterator end) {
    std::sort(begin, end);
    while (begin != end) {
      const std::uint32_t upper = begin->UpperVertex();
      const SideIterator edgeEnd =
          std::find_if(begin, end, [upper](const Side& s) { return s.UpperVertex() != upper; });
      ReadEdge(begin, edgeEnd);
      begin = edgeEnd;
    }
  }

  // All sides that lie on one edge.
  void ReadEdge(SideIterator begin, SideIterator end) {
    ++topology_.edges;
    const auto count = end - begin;
    const bool sameWay = count == 2 && begin[0].upperVertexAndWay == begin[1].upperVertexAndWay;
    if (count == 1) openSides_.push_back(begin->corner);
    if (count == 2) windings_.Join(begin[0].corner / 3, begin[1].corner / 3, !sameWay);
    if (count > 2) ++topology_.nonManifoldEdges;
    if (sameWay) ++topology_.flippedEdges;
    for (SideIterator side = begin + 1; side != end; ++side) JoinAcross(*begin, *side);
  }

  void JoinAcross(const Side& a, const Side& b) {
    facets_.Join(a.corner / 3, b.corner / 3);
    const bool sameWay = ((a.upperVertexAndWay ^ b.upperVertexAndWay) & 1U) == 0;
    corners_.Join(a.corner, sameWay ? b.corner : NextCorner(b.corner));
    corners_.Join(NextCorner(a.corner), sameWay ? NextCorner(b.corner) : b.corner);
  }

  void Conclude() {
    const std::size_t skipped = topology_.repeatedVertexFacets;
    topology_.components = facets_.Sets() - skipped;
    // Each fan of facets around a vertex has its corners in one set.
    const std::size_t fans = corners_.Sets() - 3 * skipped;
    topology_.pinchedVertices = fans - VerticesOfSides();
    topology_.eulerNumber = static_cast<std::int64_t>(fans) -
                            static_cast<std::int64_t>(topology_.edges) +
                            static_cast<std::int64_t>(mesh_.facets.size() - skipped);
    topology_.openEdges = openSides_.size();
    topology_.flippedFacets = windings_.FewestToTurn();
    topology_.holes = CountHoles();
  }

  // Open edges follow each other around a hole through the fans at their ends. Joins the fans for
  // good, so they have been counted before.
  std::size_t CountHoles() {
    for (const std::uint32_t side : openSides_) corners_.Join(side, NextCorner(side));
    std::vector<std::uint32_t> rims;
    rims.reserve(openSides_.size());
    for (const std::uint32_t side : openSides_) rims.push_back(corners_.Root(side));
    std::sort(rims.begin(), rims.end());
    return static_cast<std::size_t>(std::unique(rims.begin(), rims.end()) - rims.begin());
  }

  std::size_t VerticesOfSides() const {
    std::vector<bool> used(mesh_.vertices.size(), false);
    ForEachSide([&used](std::uint32_t lower, Side side) {
      used[lower] = true;
      used[side.UpperVertex()] = true;
    });
    return static_cast<std::size_t>(std::count(used.begin(), used.end(), true));
  }

  const Mesh& mesh_;
  MeshTopology topology_;
  UnionFind facets_;
  WindingSets windings_;
  UnionFind corners_;
  std::vector<std::size_t> bucketStart_;
  std::vector<Side> sides_;
  std::vector<std::uint32_t> openSides_;  // by their first corner
};

}  // namespace

MeshTopology AnalyseTopology(const Mesh& mesh) { return Analysis(mesh).Run(); }

}  // namespace formats

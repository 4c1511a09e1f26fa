#include "kernel/sweep/MergeFlat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "kernel/sweep/RemoveSlivers.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

// A vertex with more edges costs more to look at than merging it gains.
constexpr std::size_t kMostEdges = 200;

// The facets and neighbours around one vertex, counter-clockwise.
class Ring {
 public:
  Ring(const HalfEdgeMesh& mesh, double flatness) : m_mesh(mesh), m_flatness(flatness) {}

  // False when the vertex is not one to remove: more than two sharp or coloured edges, or a bend.
  bool Look(Index vertex) {
    Collect(vertex);
    if (m_halves.size() > kMostEdges) return false;
    m_sharp.clear();
    for (std::size_t i = 0; i < m_halves.size(); ++i) {
      if (IsFlatAcross(i)) continue;
      if (m_sharp.size() == 2) return false;
      m_sharp.push_back(i);
    }
    if (m_sharp.size() == 1) return false;
    return (m_sharp.empty() || IsStraight()) && GroupsAreFlat();
  }

  // The half edge to collapse, kNone when none keeps all facets upright and higher than `least`.
  Index BestCollapse(double least) const {
    Index best = HalfEdgeMesh::kNone;
    double bestShape = 0;
    const auto consider = [&](std::size_t i) {
      const double shape = ShapeAfter(i, least);
      if (shape > bestShape && m_mesh.CanCollapse(m_halves[i])) {
        bestShape = shape;
        best = m_halves[i];
      }
    };
    if (m_sharp.empty()) {
      for (std::size_t i = 0; i < m_halves.size(); ++i) consider(i);
    } else {
      for (const std::size_t i : m_sharp) consider(i);
    }
    return best;
  }

  const std::vector<Index>& Halves() const { return m_halves; }

 private:
  std::size_t Count() const { return m_halves.size(); }
  const Vec3& Neighbour(std::size_t i) const { return m_neighbours[i % Count()]; }
  // Facet i lies between neighbours i and i + 1.
  std::size_t FacetBefore(std::size_t i) const { return (i + Count() - 1) % Count(); }

  void Collect(Index vertex) {
    m_halves.clear();
    m_neighbours.clear();
    m_normals.clear();
    m_center = m_mesh.At(vertex);
    const Index first = m_mesh.Out(vertex);
    Index half = first;
    do {
      m_halves.push_back(half);
      m_neighbours.push_back(m_mesh.At(m_mesh.Target(half)));
      half = m_mesh.Around(half);
    } while (half != first);
    for (std::size_t i = 0; i < Count(); ++i) {
      m_normals.push_back(Normalised(Cross(Neighbour(i) - m_center, Neighbour(i + 1) - m_center)));
    }
  }

  bool IsFlatAcross(std::size_t i) const {
    const std::size_t before = FacetBefore(i);
    if (m_mesh.Colour(m_halves[before] / 3) != m_mesh.Colour(m_halves[i] / 3)) return false;
    const Vec3& a = m_normals[before];
    const Vec3& b = m_normals[i];
    return Dot(a, b) > 0 && std::abs(Dot(a, Neighbour(i + 1) - m_center)) <= m_flatness &&
           std::abs(Dot(b, Neighbour(before) - m_center)) <= m_flatness;
  }

  bool IsStraight() const {
    const Vec3 a = Neighbour(m_sharp[0]) - m_center;
    const Vec3 b = Neighbour(m_sharp[1]) - m_center;
    const Vec3 along = Normalised(b - a);
    return Dot(a, along) < 0 && Dot(b, along) > 0 && Length(Cross(a, along)) <= m_flatness;
  }

  // Each group of facets between sharp edges lies in the plane of its largest one.
  bool GroupsAreFlat() const {
    if (m_sharp.empty()) return GroupIsFlat(0, Count());
    const std::size_t span = m_sharp[1] - m_sharp[0];
    return GroupIsFlat(m_sharp[0], span) && GroupIsFlat(m_sharp[1], Count() - span);
  }

  bool GroupIsFlat(std::size_t first, std::size_t count) const {
    std::size_t largest = first;
    double most = -1;
    for (std::size_t i = first; i < first + count; ++i) {
      const double size =
          LengthSquared(Cross(Neighbour(i) - m_center, Neighbour(i + 1) - m_center));
      if (size > most) {
        most = size;
        largest = i;
      }
    }
    const Vec3& normal = m_normals[largest % Count()];
    for (std::size_t i = first; i < first + count; ++i) {
      if (Dot(m_normals[i % Count()], normal) <= 0.5) return false;
      if (std::abs(Dot(normal, Neighbour(i) - m_center)) > m_flatness) return false;
    }
    return std::abs(Dot(normal, Neighbour(first + count) - m_center)) <= m_flatness;
  }

  // The worst ratio of height to longest edge among the facets that would be left, 0 when one is
  // no facet any more.
  double ShapeAfter(std::size_t to, double least) const {
    double worst = 1;
    for (std::size_t i = 0; i < Count(); ++i) {
      if (i == to || i == FacetBefore(to)) continue;
      const Vec3& a = Neighbour(to);
      const Vec3& b = Neighbour(i);
      const Vec3& c = Neighbour(i + 1);
      const Vec3 normal = Cross(b - a, c - a);
      if (Dot(normal, m_normals[i]) <= 0) return 0;
      const double longest =
          std::sqrt(std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)}));
      const double height = Length(normal) / longest;
      if (height <= least) return 0;
      worst = std::min(worst, height / longest);
    }
    return worst;
  }

  const HalfEdgeMesh& m_mesh;
  double m_flatness;
  Vec3 m_center;
  std::vector<Index> m_halves;
  std::vector<Vec3> m_neighbours, m_normals;
  std::vector<std::size_t> m_sharp;
};

}  // namespace

void MergeFlat(HalfEdgeMesh& mesh, double flatness, double least,
               const std::function<void(double)>& watch) {
  Ring ring(mesh, flatness);
  std::vector<Index> candidates;
  for (Index vertex = 0; vertex < mesh.VertexCount(); ++vertex) {
    if (mesh.Out(vertex) == HalfEdgeMesh::kNone) continue;
    if (ring.Look(vertex)) candidates.push_back(vertex);
    if (vertex % 4096 == 0) {
      watch(0.2 * static_cast<double>(vertex) / static_cast<double>(mesh.VertexCount()));
    }
  }
  const auto total = static_cast<double>(candidates.size());
  std::vector<std::uint32_t> touched(mesh.VertexCount(), 0);
  std::size_t looked = 0;
  for (std::uint32_t round = 1; !candidates.empty(); ++round) {
    std::vector<Index> left;
    std::size_t merged = 0;
    for (const Index vertex : candidates) {
      if (++looked % 1024 == 0) watch(1 - 0.8 * static_cast<double>(candidates.size()) / total);
      if (touched[vertex] == round) {
        left.push_back(vertex);
        continue;
      }
      if (!ring.Look(vertex)) continue;
      const Index half = ring.BestCollapse(least);
      if (half == HalfEdgeMesh::kNone) {
        left.push_back(vertex);
        continue;
      }
      for (const Index out : ring.Halves()) touched[mesh.Target(out)] = round;
      mesh.Collapse(half);
      ++merged;
    }
    if (merged == 0) break;
    candidates = std::move(left);
  }
}

}  // namespace kernel

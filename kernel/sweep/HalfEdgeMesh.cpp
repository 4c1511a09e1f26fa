#include "kernel/sweep/HalfEdgeMesh.h"

#include <algorithm>
#include <utility>

namespace kernel {

HalfEdgeMesh::HalfEdgeMesh(CutMesh mesh)
    : m_mesh(std::move(mesh)),
      m_twin(3 * m_mesh.facets.size(), kNone),
      m_out(m_mesh.vertices.size(), kNone) {
  LinkTwins();
}

void HalfEdgeMesh::LinkTwins() {
  const auto count = static_cast<Index>(m_twin.size());
  std::vector<Index> begin(m_mesh.vertices.size() + 1, 0);
  for (Index half = 0; half < count; ++half) ++begin[Origin(half) + 1];
  for (std::size_t v = 0; v < m_mesh.vertices.size(); ++v) begin[v + 1] += begin[v];
  std::vector<Index> next(begin.begin(), begin.end() - 1);
  std::vector<Index> leaving(count);
  for (Index half = 0; half < count; ++half) leaving[next[Origin(half)]++] = half;
  for (Index half = 0; half < count; ++half) {
    m_out[Origin(half)] = half;
    const Index target = Target(half);
    for (Index i = begin[target]; i < begin[target + 1]; ++i) {
      if (Target(leaving[i]) == Origin(half)) m_twin[half] = leaving[i];
    }
  }
}

bool HalfEdgeMesh::IsClosed() const {
  for (Index half = 0; half < m_twin.size(); ++half) {
    if (m_twin[half] == kNone || m_twin[m_twin[half]] != half) return false;
  }
  return true;
}

bool HalfEdgeMesh::AreNeighbours(Index a, Index b) const {
  const Index first = m_out[a];
  Index half = first;
  do {
    if (Target(half) == b) return true;
    half = Around(half);
  } while (half != first);
  return false;
}

int HalfEdgeMesh::Valence(Index vertex) const {
  int valence = 0;
  Index half = m_out[vertex];
  do {
    ++valence;
    half = Around(half);
  } while (half != m_out[vertex]);
  return valence;
}

std::vector<HalfEdgeMesh::Index> HalfEdgeMesh::LiveFacets() const {
  std::vector<Index> live;
  live.reserve(FacetCount());
  for (Index facet = 0; facet < FacetCount(); ++facet) {
    if (IsLive(facet)) live.push_back(facet);
  }
  return live;
}

std::vector<HalfEdgeMesh::Index> HalfEdgeMesh::EdgesOf(const std::vector<Index>& facets) const {
  std::vector<bool> isOne(FacetCount(), false);
  for (const Index facet : facets) isOne[facet] = true;
  std::vector<Index> edges;
  for (const Index facet : facets) {
    for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
      const Index twin = Twin(half);
      if (half < twin || !isOne[twin / 3]) edges.push_back(half);
    }
  }
  return edges;
}

bool HalfEdgeMesh::CanCollapse(Index half) const {
  const Index target = Target(half);
  const Index left = Target(Next(half));
  const Index right = Target(Next(m_twin[half]));
  if (left == right || Valence(left) <= 3 || Valence(right) <= 3) return false;
  Index around = half;
  do {
    const Index neighbour = Target(around);
    if (neighbour != target && neighbour != left && neighbour != right &&
        AreNeighbours(neighbour, target)) {
      return false;
    }
    around = Around(around);
  } while (around != half);
  return true;
}

void HalfEdgeMesh::Collapse(Index half) {
  const Index gone = Origin(half);
  const Index kept = Target(half);
  const Index twin = m_twin[half];
  std::vector<Index> leaving;
  Index around = half;
  do {
    leaving.push_back(around);
    around = Around(around);
  } while (around != half);
  const Index leftOut = m_twin[Previous(half)];   // gone to left
  const Index leftIn = m_twin[Next(half)];        // left to kept
  const Index rightOut = m_twin[Previous(twin)];  // kept to right
  const Index rightIn = m_twin[Next(twin)];       // right to gone
  for (const Index out : leaving) m_mesh.facets[out / 3].vertices[out % 3] = kept;
  Glue(leftOut, leftIn);
  Glue(rightOut, rightIn);
  m_out[kept] = leftOut;
  m_out[Origin(leftIn)] = leftIn;
  m_out[Origin(rightIn)] = rightIn;
  m_out[gone] = kNone;
  for (const Index facet : {half / 3, twin / 3}) m_mesh.facets[facet].vertices.fill(kNone);
}

HalfEdgeMesh::EdgeSurroundings HalfEdgeMesh::Surroundings(Index half) const {
  const Index twin = m_twin[half];
  return {half / 3,           twin / 3,
          Origin(half),       Target(half),
          Target(Next(half)), Target(Next(twin)),
          m_twin[Next(half)], m_twin[Previous(half)],
          m_twin[Next(twin)], m_twin[Previous(twin)]};
}

bool HalfEdgeMesh::CanFlip(Index half) const {
  const Index left = Target(Next(half));
  const Index right = Target(Next(m_twin[half]));
  return left != right && Valence(Origin(half)) > 3 && Valence(Target(half)) > 3 &&
         !AreNeighbours(left, right);
}

void HalfEdgeMesh::Flip(Index half) {
  const auto [f, g, from, to, left, right, toLeft, leftFrom, fromRight, rightTo] =
      Surroundings(half);
  const std::uint8_t colour = m_mesh.facets[g].colour;
  m_mesh.facets[f] = {{left, from, right}, colour};
  m_mesh.facets[g] = {{right, to, left}, colour};
  Glue(3 * f, leftFrom);
  Glue(3 * f + 1, fromRight);
  Glue(3 * f + 2, 3 * g + 2);
  Glue(3 * g, rightTo);
  Glue(3 * g + 1, toLeft);
  m_out[left] = 3 * f;
  m_out[from] = 3 * f + 1;
  m_out[right] = 3 * g;
  m_out[to] = 3 * g + 1;
}

HalfEdgeMesh::Index HalfEdgeMesh::AddVertex(const Vec3& position) {
  m_mesh.vertices.push_back(position);
  m_out.push_back(kNone);
  return static_cast<Index>(m_mesh.vertices.size() - 1);
}

HalfEdgeMesh::Index HalfEdgeMesh::AddFacet(const std::array<Index, 3>& vertices,
                                           std::uint8_t colour) {
  m_mesh.facets.push_back({vertices, colour});
  m_twin.resize(m_twin.size() + 3, kNone);
  return static_cast<Index>(m_mesh.facets.size() - 1);
}

void HalfEdgeMesh::SplitEdge(Index half, const Vec3& position) {
  const auto [f, g, from, to, left, right, toLeft, leftFrom, fromRight, rightTo] =
      Surroundings(half);
  const Index vertex = AddVertex(position);
  m_mesh.facets[f].vertices = {from, vertex, left};
  m_mesh.facets[g].vertices = {vertex, from, right};
  const Index f2 = AddFacet({vertex, to, left}, m_mesh.facets[f].colour);
  const Index g2 = AddFacet({to, vertex, right}, m_mesh.facets[g].colour);
  Glue(3 * f, 3 * g);
  Glue(3 * f + 1, 3 * f2 + 2);
  Glue(3 * f + 2, leftFrom);
  Glue(3 * g + 1, fromRight);
  Glue(3 * g + 2, 3 * g2 + 1);
  Glue(3 * f2, 3 * g2);
  Glue(3 * f2 + 1, toLeft);
  Glue(3 * g2 + 2, rightTo);
  m_out[from] = 3 * f;
  m_out[vertex] = 3 * g;
  m_out[to] = 3 * g2;
  m_out[left] = 3 * f + 2;
  m_out[right] = 3 * g + 2;
}

void HalfEdgeMesh::SplitFacet(Index facet, const Vec3& position) {
  const std::array<Index, 3> corner = m_mesh.facets[facet].vertices;
  const std::array<Index, 3> across = {m_twin[3 * facet], m_twin[3 * facet + 1],
                                       m_twin[3 * facet + 2]};
  const Index vertex = AddVertex(position);
  m_mesh.facets[facet].vertices = {corner[0], corner[1], vertex};
  const Index second = AddFacet({corner[1], corner[2], vertex}, m_mesh.facets[facet].colour);
  const Index third = AddFacet({corner[2], corner[0], vertex}, m_mesh.facets[facet].colour);
  const std::array<Index, 3> parts = {facet, second, third};
  for (std::size_t i = 0; i < 3; ++i) {
    Glue(3 * parts[i], across[i]);
    Glue(3 * parts[i] + 1, 3 * parts[(i + 1) % 3] + 2);
    m_out[corner[i]] = 3 * parts[i];
  }
  m_out[vertex] = 3 * facet + 2;
}

CutMesh HalfEdgeMesh::Release() {
  std::erase_if(m_mesh.facets,
                [](const CutMesh::Facet& facet) { return facet.vertices[0] == kNone; });
  return std::move(m_mesh);
}

}  // namespace kernel

#include "kernel/compare/SplitEdges.h"

#include <algorithm>
#include <optional>

namespace kernel {
namespace {

using Index = std::uint32_t;

// Edges nearer in length than this are equally long, whatever rounding says.
constexpr double kAlike = 1e-6;

class EdgeSplitter {
 public:
  EdgeSplitter(std::vector<PartEdge> edges, std::vector<Vec3>& vertices)
      : m_edges(std::move(edges)), m_vertices(vertices), m_touched(vertices.size(), false) {
    std::sort(m_edges.begin(), m_edges.end());
    m_edges.erase(std::unique(m_edges.begin(), m_edges.end()), m_edges.end());
    m_first = static_cast<Index>(vertices.size());
    vertices.reserve(vertices.size() + m_edges.size());
    for (const PartEdge& edge : m_edges) {
      m_touched[edge.low] = m_touched[edge.high] = true;
      vertices.push_back(Halfway(vertices[edge.low], vertices[edge.high]));
    }
  }

  void Split(const PartPiece& piece, std::vector<PartPiece>& pieces) const {
    std::array<std::optional<Index>, 3> middles;
    bool any = false;
    for (std::size_t i = 0; i < 3; ++i) {
      middles[i] = MiddleOf(piece.vertices[i], piece.vertices[(i + 1) % 3]);
      any = any || middles[i];
    }
    if (any) {
      Split(piece, middles, pieces);
    } else {
      pieces.push_back(piece);
    }
  }

 private:
  std::optional<Index> MiddleOf(Index a, Index b) const {
    if (!m_touched[a] || !m_touched[b]) return std::nullopt;
    const PartEdge edge(a, b);
    const auto found = std::lower_bound(m_edges.begin(), m_edges.end(), edge);
    if (found == m_edges.end() || *found != edge) return std::nullopt;
    return m_first + static_cast<Index>(found - m_edges.begin());
  }

  double Length(const PartPiece& piece, std::size_t edge) const {
    return kernel::Length(m_vertices[piece.vertices[(edge + 1) % 3]] -
                          m_vertices[piece.vertices[edge]]);
  }

  // `middles` are those of the piece's edges that are to be halved.
  void Split(const PartPiece& piece, const std::array<std::optional<Index>, 3>& middles,
             std::vector<PartPiece>& pieces) const {
    std::size_t edge = 3;
    for (std::size_t i = 0; i < 3; ++i) {
      if (!middles[i]) continue;
      if (edge == 3 || Length(piece, i) > (1 + kAlike) * Length(piece, edge)) edge = i;
    }
    if (edge == 3) {
      pieces.push_back(piece);
      return;
    }
    const std::size_t next = (edge + 1) % 3, last = (edge + 2) % 3;
    const auto& v = piece.vertices;
    const Index middle = *middles[edge];
    Split({{v[edge], middle, v[last]}, piece.band}, {std::nullopt, std::nullopt, middles[last]},
          pieces);
    Split({{middle, v[next], v[last]}, piece.band}, {std::nullopt, middles[next], std::nullopt},
          pieces);
  }

  std::vector<PartEdge> m_edges;
  const std::vector<Vec3>& m_vertices;
  std::vector<bool> m_touched;  // vertices at an end of an edge
  Index m_first = 0;            // the first new vertex
};

}  // namespace

Vec3 Halfway(const Vec3& a, const Vec3& b) { return a * 0.5 + b * 0.5; }

std::size_t LongestEdge(const std::array<Vec3, 3>& corners) {
  std::size_t longest = 0;
  double length = Length(corners[1] - corners[0]);
  for (std::size_t i = 1; i < 3; ++i) {
    const double own = Length(corners[(i + 1) % 3] - corners[i]);
    if (own <= (1 + kAlike) * length) continue;
    longest = i;
    length = own;
  }
  return longest;
}

void SplitEdges(std::vector<PartEdge> edges, std::vector<Vec3>& vertices,
                std::vector<PartPiece>& pieces) {
  const EdgeSplitter splitter(std::move(edges), vertices);
  std::vector<PartPiece> split;
  split.reserve(pieces.size() + pieces.size() / 4);
  for (const PartPiece& piece : pieces) splitter.Split(piece, split);
  pieces = std::move(split);
}

}  // namespace kernel

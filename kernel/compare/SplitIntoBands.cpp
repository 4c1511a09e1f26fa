#include "kernel/compare/SplitIntoBands.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

#include "kernel/common/Workers.h"
#include "kernel/compare/BandProof.h"
#include "kernel/compare/MeasureDeviations.h"
#include "kernel/compare/SplitEdges.h"

namespace kernel {
namespace {

using Index = std::uint32_t;
using Tell = std::function<void(double)>;

constexpr std::size_t kBlock = 64;  // pieces whose bands one task looks for
// Of a band's finest facets; what a proof may not decide is that close to a limit.
constexpr double kFinestProof = 1.0 / 16;

class BandSplitter {
 public:
  BandSplitter(const StockMesh& part, const StockTree& stock, const CompareBands& bands,
               double finest)
      : m_stock(stock),
        m_bands(bands),
        m_finest(finest),
        m_proof(stock, bands, finest * kFinestProof, m_stopped),
        m_vertices(part.vertices) {
    m_pieces.reserve(part.facets.size());
    for (const StockMesh::Facet& facet : part.facets) m_pieces.push_back({facet.vertices});
  }

  void Run(const Tell& tell) {
    const double rounds = ExpectedRounds();
    double round = 0;
    const Tell tellShare = [&](double share) {
      tell(std::min((round + share) / (rounds + 1), 1.0));
    };
    for (;; round = std::min(round + 1, rounds)) {
      FindOpen();
      if (m_coarse.empty() && m_fine.empty()) return;
      Measure([&](double share) { tellShare(0.5 * share); });
      DecideFine();
      std::vector<PartEdge> edges =
          DecideCoarse([&](double share) { tellShare(0.5 + 0.5 * share); });
      if (edges.empty()) return;
      SplitEdges(std::move(edges), m_vertices, m_pieces);
    }
  }

  CutMesh Result() {
    CutMesh mesh;
    mesh.vertices = std::move(m_vertices);
    mesh.facets.reserve(m_pieces.size());
    for (const PartPiece& piece : m_pieces) {
      mesh.facets.push_back(
          {piece.vertices, m_bands.ColourOf(static_cast<std::size_t>(piece.band))});
    }
    return mesh;
  }

 private:
  Corners CornersOf(const PartPiece& piece) const {
    const auto& v = piece.vertices;
    return {m_vertices[v[0]], m_vertices[v[1]], m_vertices[v[2]]};
  }

  double ExpectedRounds() const {
    double longest = 0;
    for (const PartPiece& piece : m_pieces) {
      const Corners corners = CornersOf(piece);
      const std::size_t edge = LongestEdge(corners);
      longest = std::max(longest, Length(corners[(edge + 1) % 3] - corners[edge]));
    }
    return 1 + 2 * std::log2(std::max(longest / m_finest, 1.0));
  }

  // Whether the piece's longest edge may be halved; it may not when that makes no new point.
  bool MayBeSplit(const Corners& corners) const {
    const std::size_t edge = LongestEdge(corners);
    const Vec3& from = corners[edge];
    const Vec3& to = corners[(edge + 1) % 3];
    if (Length(to - from) <= m_finest) return false;
    const Vec3 middle = Halfway(from, to);
    return middle != from && middle != to;
  }

  void FindOpen() {
    m_coarse.clear();
    m_fine.clear();
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
      if (m_pieces[i].band != PartPiece::kOpen) continue;
      (MayBeSplit(CornersOf(m_pieces[i])) ? m_coarse : m_fine).push_back(i);
    }
  }

  // Deviations at the centroids of the fine pieces, and at the corners of the others as far as they
  // are new.
  void Measure(const Tell& tell) {
    std::vector<Vec3> points;
    for (const std::size_t i : m_fine) {
      const auto& [a, b, c] = CornersOf(m_pieces[i]);
      points.push_back(a + ((b - a) + (c - a)) / 3);
    }
    m_deviations.resize(m_vertices.size());
    m_measured.resize(m_vertices.size(), false);
    std::vector<Index> vertices;
    for (const std::size_t i : m_coarse) {
      for (const Index v : m_pieces[i].vertices) {
        if (m_measured[v]) continue;
        m_measured[v] = true;
        vertices.push_back(v);
        points.push_back(m_vertices[v]);
      }
    }
    std::vector<Deviation> found = MeasureDeviations(m_stock, points, tell);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
      m_deviations[vertices[i]] = found[m_fine.size() + i];
    }
    found.resize(m_fine.size());
    m_centroids = std::move(found);
  }

  void DecideFine() {
    for (std::size_t i = 0; i < m_fine.size(); ++i) {
      m_pieces[m_fine[i]].band = static_cast<std::int32_t>(m_bands.BandOf(m_centroids[i].value));
    }
  }

  // Gives the pieces that one band holds their band; the longest edges of the others.
  std::vector<PartEdge> DecideCoarse(const Tell& tell) {
    const std::size_t blocks = (m_coarse.size() + kBlock - 1) / kBlock;
    RunTasks(
        blocks,
        [&](std::size_t block) {
          const std::size_t end = std::min(m_coarse.size(), (block + 1) * kBlock);
          for (std::size_t i = block * kBlock; i < end; ++i) Decide(m_pieces[m_coarse[i]]);
        },
        [&](std::size_t done) {
          try {
            tell(static_cast<double>(done) / static_cast<double>(blocks));
          } catch (...) {
            m_stopped = true;
            throw;
          }
        });
    std::vector<PartEdge> edges;
    for (const std::size_t i : m_coarse) {
      if (m_pieces[i].band != PartPiece::kOpen) continue;
      const std::size_t edge = LongestEdge(CornersOf(m_pieces[i]));
      edges.emplace_back(m_pieces[i].vertices[edge], m_pieces[i].vertices[(edge + 1) % 3]);
    }
    return edges;
  }

  void Decide(PartPiece& piece) const {
    const auto& [a, b, c] = piece.vertices;
    const std::array<Deviation, 3> deviations = {m_deviations[a], m_deviations[b], m_deviations[c]};
    const std::size_t band = m_bands.BandOf(deviations[0].value);
    if (m_bands.BandOf(deviations[1].value) != band ||
        m_bands.BandOf(deviations[2].value) != band) {
      return;
    }
    if (m_proof.Holds(CornersOf(piece), deviations, band)) {
      piece.band = static_cast<std::int32_t>(band);
    }
  }

  const StockTree& m_stock;
  const CompareBands& m_bands;
  double m_finest;
  std::atomic<bool> m_stopped{false};
  BandProof m_proof;

  std::vector<Vec3> m_vertices;
  std::vector<Deviation> m_deviations;  // by vertex, where measured
  std::vector<bool> m_measured;
  std::vector<PartPiece> m_pieces;
  std::vector<std::size_t> m_coarse, m_fine;  // pieces of no band, as far as they may be split
  std::vector<Deviation> m_centroids;         // of the fine ones
};

}  // namespace

CutMesh SplitIntoBands(const StockMesh& part, const StockTree& stock, const CompareBands& bands,
                       double finest, const std::function<void(double)>& tell) {
  BandSplitter splitter(part, stock, bands, finest);
  splitter.Run(tell);
  return splitter.Result();
}

}  // namespace kernel

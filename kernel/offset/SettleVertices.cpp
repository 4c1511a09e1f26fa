#include "kernel/offset/SettleVertices.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

// Vertices that are in each other's way after so many passes stay so.
constexpr int kMostPasses = 6;
constexpr double kVertexShare = 0.1;  // of the tolerance, that a vertex may stay off
// Shares of the tolerance: the least and the most that a vertex is moved beyond the surface, and
// what its edges may be off for that.
constexpr double kLeastShift = 0.1;
constexpr double kMostShift = 0.4;
constexpr double kMostBend = 4;

class Settler {
 public:
  Settler(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits)
      : m_mesh(mesh), m_makers(makers), m_limits(limits) {}

  std::vector<Index> Run(const Watch& watch) {
    MoveVertices([&](double share) { watch(share / 2); });
    Balance([&](double share) { watch((1 + share) / 2); });
    return std::move(m_stuckVertices);
  }

 private:
  Vec3 MiddleOf(Index half) const {
    return (m_mesh.At(m_mesh.Origin(half)) + m_mesh.At(m_mesh.Target(half))) / 2;
  }
  double LengthOf(Index half) const {
    return Length(m_mesh.At(m_mesh.Target(half)) - m_mesh.At(m_mesh.Origin(half)));
  }

  void MoveVertices(const Watch& watch) {
    std::vector<std::optional<Vec3>> target(m_mesh.VertexCount());
    std::vector<double> off(m_mesh.VertexCount());
    ForEachInChunks(target.size(), m_makers, watch, [&](const LocalOffset& solid, std::size_t i) {
      if (m_mesh.Out(static_cast<Index>(i)) == HalfEdgeMesh::kNone) return;
      const Vec3& point = m_mesh.At(static_cast<Index>(i));
      off[i] = std::abs(solid.HowFarOff(point).distance);
      if (off[i] > m_limits.exact) target[i] = PlaceOnOffset(solid, point, m_limits);
    });
    std::vector<Index> waiting;
    for (Index vertex = 0; vertex < target.size(); ++vertex) {
      if (off[vertex] > m_limits.exact) waiting.push_back(vertex);
    }
    // One that is in the way of another may be gone the next time.
    for (int pass = 0; pass < kMostPasses && !waiting.empty(); ++pass) {
      std::erase_if(waiting, [&](Index vertex) {
        if (!target[vertex] || !MayMove(m_mesh, vertex, *target[vertex])) return false;
        m_mesh.MoveTo(vertex, *target[vertex]);
        return true;
      });
    }
    std::erase_if(waiting, [&](Index vertex) {
      return off[vertex] <= kVertexShare * m_limits.tolerance || GiveUp(vertex);
    });
    m_stuckVertices = std::move(waiting);
  }

  // Lets a vertex that has no place become one with a neighbour, the nearest that does.
  bool GiveUp(Index vertex) {
    std::vector<Index> halves;
    Index half = m_mesh.Out(vertex);
    if (half == HalfEdgeMesh::kNone) return true;
    do {
      halves.push_back(half);
      half = m_mesh.Around(half);
    } while (half != m_mesh.Out(vertex));
    std::sort(halves.begin(), halves.end(), [&](Index a, Index b) {
      return LengthOf(a) != LengthOf(b) ? LengthOf(a) < LengthOf(b) : a < b;
    });
    for (const Index out : halves) {
      const Index neighbour = m_mesh.Target(out);
      if (!m_mesh.CanCollapse(out) || !MayMove(m_mesh, vertex, m_mesh.At(neighbour), neighbour)) {
        continue;
      }
      m_mesh.Collapse(out);
      return true;
    }
    return false;
  }

  // On a curved piece, moves vertices beyond the surface by half of what the middles of their edges
  // lie short of it, so that both are off by less and facets may be larger. On a flat piece there
  // is nothing to move.
  void Balance(const Watch& watch) {
    const std::vector<Index> edges = m_mesh.EdgesOf(m_mesh.LiveFacets());
    std::vector<double> off(edges.size());
    ForEachInChunks(
        off.size(), m_makers, [&](double share) { watch(share / 2); },
        [&](const LocalOffset& solid, std::size_t i) {
          off[i] = solid.HowFarOff(MiddleOf(edges[i])).distance;
        });
    struct Around {
      double sum = 0, low = 0, high = 0;
      int count = 0;
    };
    std::vector<Around> around(m_mesh.VertexCount());
    for (std::size_t i = 0; i < edges.size(); ++i) {
      for (const Index vertex : {m_mesh.Origin(edges[i]), m_mesh.Target(edges[i])}) {
        Around& one = around[vertex];
        one.sum += off[i];
        one.low = std::min(one.low, off[i]);
        one.high = std::max(one.high, off[i]);
        ++one.count;
      }
    }
    const double little = kLeastShift * m_limits.tolerance;
    std::vector<Vec3> shift(around.size());
    ForEachInChunks(
        around.size(), m_makers, [&](double share) { watch(0.5 + share / 2); },
        [&](const LocalOffset& solid, std::size_t i) {
          const Around& one = around[i];
          if (one.count == 0 || std::min(-one.low, one.high) > little) return;
          if (std::max(-one.low, one.high) > kMostBend * m_limits.tolerance) return;
          const double mean = one.sum / one.count;
          if (std::abs(mean) <= little) return;
          const Vec3& at = m_mesh.At(static_cast<Index>(i));
          const double most = kMostShift * m_limits.tolerance;
          shift[i] = solid.From(solid.HowFarOff(at).maker, at).plane.normal *
                     std::clamp(-mean / 2, -most, most);
        });
    for (Index vertex = 0; vertex < shift.size(); ++vertex) {
      if (shift[vertex] == Vec3{}) continue;
      const Vec3 to = m_mesh.At(vertex) + shift[vertex];
      if (MayMove(m_mesh, vertex, to)) m_mesh.MoveTo(vertex, to);
    }
  }

  HalfEdgeMesh& m_mesh;
  const OffsetMakers& m_makers;
  OffsetLimits m_limits;
  std::vector<Index> m_stuckVertices;
};

}  // namespace

std::vector<HalfEdgeMesh::Index> SettleVertices(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                                                const OffsetLimits& limits, const Watch& watch) {
  return Settler(mesh, makers, limits).Run(watch);
}

}  // namespace kernel

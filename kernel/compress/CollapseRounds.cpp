#include "kernel/compress/CollapseRounds.h"

#include <algorithm>
#include <array>
#include <limits>

#include "kernel/common/Workers.h"
#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

constexpr std::size_t kChunk = 256;
// A round looks at one in so many of the vertices that wait, the cheapest, but at a few at least.
constexpr std::size_t kShareOfRound = 3;
constexpr std::size_t kLeastOfRound = 2000;

// Does work(begin, end) for parts of 0 .. count on all threads.
template <class Work>
void InChunks(std::size_t count, const Work& work, const std::function<void()>& watch) {
  RunTasks((count + kChunk - 1) / kChunk,
           [&](std::size_t chunk) { work(chunk * kChunk, std::min((chunk + 1) * kChunk, count)); },
           [&](std::size_t) { watch(); });
}

std::array<Vec3, 3> CornersOf(const HalfEdgeMesh& mesh, Index facet) {
  return {mesh.At(mesh.Origin(3 * facet)), mesh.At(mesh.Origin(3 * facet + 1)),
          mesh.At(mesh.Origin(3 * facet + 2))};
}

// Hands the points over to the nearest of the facets.
void Settle(MergedMesh& merged, const std::vector<Index>& points,
            const std::vector<Index>& facets) {
  for (const Index point : points) {
    const Vec3 at = merged.carried.At(merged.mesh, point);
    double least = std::numeric_limits<double>::infinity();
    Index nearest = facets.front();
    for (const Index facet : facets) {
      const Vec3 found = NearestOnTriangle(CornersOf(merged.mesh, facet), at).point;
      const double square = LengthSquared(found - at);
      if (square >= least) continue;
      least = square;
      nearest = facet;
    }
    merged.carried.Add(nearest, point);
  }
}

void KeepFeatures(MergedMesh& merged, Index half) {
  HalfEdgeMesh& mesh = merged.mesh;
  FeatureEdges& features = merged.features;
  // A vertex on a feature moves along it: its other feature edge then stands for both.
  if (features.Is(half)) {
    const Vec3& gone = mesh.At(mesh.Origin(half));
    const Vec3& kept = mesh.At(mesh.Target(half));
    for (Index other = mesh.Around(half); other != half; other = mesh.Around(other)) {
      if (!features.Is(other)) continue;
      const Vec3 along = Normalised(mesh.At(mesh.Target(other)) - kept);
      const double moved = std::max(features.Moved(half), features.Moved(other));
      features.SetMoved(mesh, other, moved + Length(Cross(gone - kept, along)));
    }
  }
  const Index twin = mesh.Twin(half);
  features.Join(mesh.Twin(HalfEdgeMesh::Previous(half)), mesh.Twin(HalfEdgeMesh::Next(half)));
  features.Join(mesh.Twin(HalfEdgeMesh::Previous(twin)), mesh.Twin(HalfEdgeMesh::Next(twin)));
}

void Apply(MergedMesh& merged, Index half) {
  HalfEdgeMesh& mesh = merged.mesh;
  std::vector<Index> points = {mesh.Origin(half)};
  std::vector<Index> facets;
  Index around = half;
  do {
    const Index facet = around / 3;
    merged.carried.ForEachOf(facet, [&](Index point) { points.push_back(point); });
    merged.carried.Clear(facet);
    facets.push_back(facet);
    around = mesh.Around(around);
  } while (around != half);
  KeepFeatures(merged, half);
  mesh.Collapse(half);
  std::erase_if(facets, [&](Index facet) { return !mesh.IsLive(facet); });
  Settle(merged, points, facets);
}

class Rounds {
 public:
  Rounds(MergedMesh& merged, const CompressLimits& limits)
      : m_merged(merged),
        m_limits(limits),
        m_cost(merged.mesh.VertexCount(), 0),
        m_isWaiting(merged.mesh.VertexCount(), 0),
        m_touched(merged.mesh.VertexCount(), 0) {}

  void Run(const Watch& watch) {
    StartAll(watch);
    for (m_round = 1; !m_waiting.empty(); ++m_round) {
      CollapseAll(Choose(), [&] { watch(Share()); });
      std::erase_if(m_waiting, [&](Index vertex) { return m_isWaiting[vertex] == 0; });
      m_waiting.insert(m_waiting.end(), m_woken.begin(), m_woken.end());
      m_woken.clear();
    }
  }

 private:
  // Rounds get shorter and shorter.
  double Share() const { return 1 - 20.0 / (20.0 + m_round); }

  void StartAll(const Watch& watch) {
    for (Index vertex = 0; vertex < m_merged.mesh.VertexCount(); ++vertex) {
      if (m_merged.mesh.Out(vertex) != HalfEdgeMesh::kNone) m_waiting.push_back(vertex);
    }
    const auto start = [&](std::size_t begin, std::size_t end) {
      VertexStar star(m_merged, m_limits);
      for (std::size_t i = begin; i < end; ++i) {
        m_cost[m_waiting[i]] = star.LeastCost(m_waiting[i]);
        m_isWaiting[m_waiting[i]] = 1;
      }
    };
    InChunks(m_waiting.size(), start, [&] { watch(0); });
  }

  // Cheap vertices whose stars have no vertex in common.
  std::vector<Index> Choose() {
    const auto before = [this](Index a, Index b) {
      return m_cost[a] != m_cost[b] ? m_cost[a] < m_cost[b] : a < b;
    };
    const std::size_t count =
        std::min(m_waiting.size(), std::max(m_waiting.size() / kShareOfRound, kLeastOfRound));
    const auto end = m_waiting.begin() + static_cast<std::ptrdiff_t>(count);
    std::nth_element(m_waiting.begin(), end - 1, m_waiting.end(), before);
    m_most = m_cost[*(end - 1)];
    std::sort(m_waiting.begin(), end, before);
    std::vector<Index> chosen;
    for (std::size_t i = 0; i < count; ++i) {
      if (TryTouch(m_waiting[i])) chosen.push_back(m_waiting[i]);
    }
    return chosen;
  }

  bool TryTouch(Index vertex) {
    const HalfEdgeMesh& mesh = m_merged.mesh;
    const Index first = mesh.Out(vertex);
    if (m_touched[vertex] == m_round) return false;
    Index half = first;
    do {
      if (m_touched[mesh.Target(half)] == m_round) return false;
      half = mesh.Around(half);
    } while (half != first);
    m_touched[vertex] = m_round;
    do {
      m_touched[mesh.Target(half)] = m_round;
      half = mesh.Around(half);
    } while (half != first);
    return true;
  }

  void CollapseAll(const std::vector<Index>& chosen, const std::function<void()>& watch) {
    std::vector<std::vector<Index>> woken((chosen.size() + kChunk - 1) / kChunk);
    const auto collapse = [&](std::size_t begin, std::size_t end) {
      VertexStar star(m_merged, m_limits);
      for (std::size_t i = begin; i < end; ++i) {
        TryCollapse(chosen[i], star, woken[begin / kChunk]);
      }
    };
    InChunks(chosen.size(), collapse, watch);
    for (const std::vector<Index>& some : woken) {
      m_woken.insert(m_woken.end(), some.begin(), some.end());
    }
  }

  // Reads and changes no vertex beyond the star, and no facet that has none of them.
  void TryCollapse(Index vertex, VertexStar& star, std::vector<Index>& woken) {
    const PlannedCollapse plan = star.Plan(vertex);
    const bool isPlanned = plan.half != HalfEdgeMesh::kNone;
    if (isPlanned && plan.cost > m_most) {
      m_cost[vertex] = plan.cost;
      return;
    }
    m_isWaiting[vertex] = 0;
    if (!isPlanned) return;
    for (const Index half : star.Halves()) {
      const Index neighbour = m_merged.mesh.Target(half);
      m_cost[neighbour] = std::max(m_cost[neighbour], plan.cost);
      if (m_isWaiting[neighbour] == 0) woken.push_back(neighbour);
      m_isWaiting[neighbour] = 1;
    }
    Apply(m_merged, plan.half);
  }

  MergedMesh& m_merged;
  CompressLimits m_limits;
  // Of each vertex: what its collapse costs, or did before its surroundings changed.
  std::vector<double> m_cost;
  std::vector<std::uint8_t> m_isWaiting;
  std::vector<std::uint32_t> m_touched;
  std::vector<Index> m_waiting, m_woken;
  double m_most = 0;
  std::uint32_t m_round = 0;
};

}  // namespace

void CollapseInRounds(MergedMesh& merged, const CompressLimits& limits, const Watch& watch) {
  Rounds(merged, limits).Run(watch);
}

}  // namespace kernel

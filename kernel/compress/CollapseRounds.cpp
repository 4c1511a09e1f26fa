#include "kernel/compress/CollapseRounds.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "kernel/common/Workers.h"
#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

constexpr std::size_t kChunk = 256;
// A round takes one in so many of the planned collapses, the cheapest, but not less than a few.
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
void Settle(MergedMesh& merged, const std::vector<Index>& points, const std::vector<Index>& facets) {
  for (const Index point : points) {
    const Vec3& at = merged.mesh.At(point);
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
  const Index gone = mesh.Origin(half);
  std::vector<Index> points = {gone};
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
  Rounds(MergedMesh& merged, const CompressLimits& limits, const Watch& watch)
      : m_merged(merged),
        m_limits(limits),
        m_watch(watch),
        m_plans(merged.mesh.VertexCount()),
        m_touched(merged.mesh.VertexCount(), 0) {}

  void Run() {
    std::vector<Index> due;
    for (Index vertex = 0; vertex < m_merged.mesh.VertexCount(); ++vertex) {
      if (m_merged.mesh.Out(vertex) != HalfEdgeMesh::kNone) due.push_back(vertex);
    }
    PlanAll(due);
    std::vector<Index> planned = std::move(due);
    for (m_round = 1;; ++m_round) {
      std::erase_if(planned,
                    [&](Index vertex) { return m_plans[vertex].half == HalfEdgeMesh::kNone; });
      if (planned.empty()) return;
      const std::vector<Index> chosen = Choose(planned);
      if (chosen.empty()) continue;
      std::vector<Index> changed = AroundAll(chosen);
      InChunks(
          chosen.size(),
          [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i) Apply(m_merged, chosen[i]);
          },
          [&] { Tell(); });
      std::vector<Index> fresh;
      for (const Index vertex : changed) {
        if (m_plans[vertex].half == HalfEdgeMesh::kNone) fresh.push_back(vertex);
      }
      PlanAll(changed);
      planned.insert(planned.end(), fresh.begin(), fresh.end());
    }
  }

 private:
  // Rounds get shorter and shorter.
  void Tell() const { m_watch(1 - 20.0 / (20.0 + m_round)); }

  void PlanAll(const std::vector<Index>& vertices) {
    InChunks(
        vertices.size(),
        [&](std::size_t begin, std::size_t end) {
          VertexStar star(m_merged, m_limits);
          for (std::size_t i = begin; i < end; ++i) m_plans[vertices[i]] = star.Plan(vertices[i]);
        },
        [&] { Tell(); });
  }

  bool ComesBefore(Index a, Index b) const {
    if (m_plans[a].cost != m_plans[b].cost) return m_plans[a].cost < m_plans[b].cost;
    return a < b;
  }

  // The collapses of this round. Plans that do not hold any more are dropped.
  std::vector<Index> Choose(std::vector<Index>& planned) {
    const auto before = [this](Index a, Index b) { return ComesBefore(a, b); };
    const std::size_t count =
        std::min(planned.size(), std::max(planned.size() / kShareOfRound, kLeastOfRound));
    const auto end = planned.begin() + static_cast<std::ptrdiff_t>(count);
    std::nth_element(planned.begin(), end - 1, planned.end(), before);
    std::sort(planned.begin(), end, before);
    std::vector<Index> chosen;
    VertexStar star(m_merged, m_limits);
    for (std::size_t i = 0; i < count; ++i) {
      PlannedCollapse& plan = m_plans[planned[i]];
      if (IsTouched(plan.half)) continue;
      if (star.IsStillSound(plan.half)) {
        Touch(planned[i], star);
        chosen.push_back(plan.half);
      }
      plan.half = HalfEdgeMesh::kNone;
    }
    return chosen;
  }

  bool IsTouched(Index half) const {
    if (m_touched[m_merged.mesh.Origin(half)] == m_round) return true;
    Index around = half;
    do {
      if (m_touched[m_merged.mesh.Target(around)] == m_round) return true;
      around = m_merged.mesh.Around(around);
    } while (around != half);
    return false;
  }

  void Touch(Index vertex, const VertexStar& star) {
    m_touched[vertex] = m_round;
    for (const Index half : star.Halves()) m_touched[m_merged.mesh.Target(half)] = m_round;
  }

  // The vertices around those that go.
  std::vector<Index> AroundAll(const std::vector<Index>& chosen) const {
    std::vector<Index> around;
    for (const Index half : chosen) {
      Index out = half;
      do {
        around.push_back(m_merged.mesh.Target(out));
        out = m_merged.mesh.Around(out);
      } while (out != half);
    }
    return around;
  }

  MergedMesh& m_merged;
  CompressLimits m_limits;
  const Watch& m_watch;
  std::vector<PlannedCollapse> m_plans;
  std::vector<std::uint32_t> m_touched;
  std::uint32_t m_round = 0;
};

}  // namespace

void CollapseInRounds(MergedMesh& merged, const CompressLimits& limits, const Watch& watch) {
  Rounds(merged, limits, watch).Run();
}

}  // namespace kernel

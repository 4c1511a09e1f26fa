#include "kernel/offset/MendFolds.h"

#include <algorithm>

#include "kernel/offset/BestMend.h"
#include "kernel/offset/EachOnOffset.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

constexpr std::size_t kChunk = 16;  // each of these may take a while
constexpr int kMostRounds = 60;
// For one facet: where two ways to mesh a place cost the same but for rounding, one would follow
// the other without an end.
constexpr int kMostMends = 20;

class Ward {
 public:
  Ward(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
       const std::function<void()>& watch)
      : m_mesh(mesh),
        m_makers(makers),
        m_limits(limits),
        m_watch(watch),
        m_past(mesh.FacetCount()) {}

  std::vector<Index> Treat(std::vector<Index> due) {
    for (int round = 0; round < kMostRounds && !due.empty(); ++round) due = Round(due);
    std::vector<Index> touched;
    for (Index facet = 0; facet < m_touched.size(); ++facet) {
      if (m_touched[facet] && m_mesh.IsLive(facet)) touched.push_back(facet);
    }
    return touched;
  }

 private:
  // Of a facet and those that it was made of.
  struct Past {
    int mends = 0;          // found for its sake
    bool isShaken = false;  // by a detour; no second one is made
  };

  std::vector<Index> Round(const std::vector<Index>& due) {
    std::vector<Mend> mends(due.size());
    ForEachInChunks(
        due.size(), m_makers, [&](double) { m_watch(); },
        [&](const LocalOffset& solid, std::size_t i) {
          mends[i] = BestMend(m_mesh, solid, m_limits, due[i], !m_past[due[i]].isShaken);
        },
        kChunk);
    for (std::size_t i = 0; i < due.size(); ++i) {
      if (mends[i].kind != Mend::Kind::kNone) ++m_past[due[i]].mends;
    }
    std::erase_if(mends, [](const Mend& mend) { return mend.kind == Mend::Kind::kNone; });
    std::sort(mends.begin(), mends.end(), [](const Mend& a, const Mend& b) {
      return a.gain != b.gain ? a.gain > b.gain : a.half < b.half;
    });
    m_changed.assign(m_mesh.FacetCount(), false);
    m_again.clear();
    for (const Mend& mend : mends) Do(mend);
    m_changed.resize(m_mesh.FacetCount(), true);
    m_touched.resize(m_mesh.FacetCount(), false);
    std::vector<Index> again = std::move(m_again);
    for (Index facet = 0; facet < m_changed.size(); ++facet) {
      if (!m_changed[facet]) continue;
      m_touched[facet] = true;
      if (!m_mesh.IsLive(facet)) continue;
      again.push_back(facet);
      // What was stuck beside it may not be any more.
      for (Index half = 3 * facet; half < 3 * facet + 3; ++half) {
        again.push_back(m_mesh.Twin(half) / 3);
      }
    }
    std::erase_if(again, [&](Index facet) {
      return !m_mesh.IsLive(facet) || m_past[facet].mends >= kMostMends;
    });
    std::sort(again.begin(), again.end());
    again.erase(std::unique(again.begin(), again.end()), again.end());
    return again;
  }

  // The facets that a mend was weighed with.
  std::vector<Index> Concerned(const Mend& mend) const {
    if (mend.kind == Mend::Kind::kPoint) return {mend.half / 3};
    if (mend.kind == Mend::Kind::kFlip || mend.kind == Mend::Kind::kSplit) {
      return {mend.half / 3, m_mesh.Twin(mend.half) / 3};
    }
    std::vector<Index> facets;
    Index out = mend.half;
    do {
      facets.push_back(out / 3);
      out = m_mesh.Around(out);
    } while (out != mend.half);
    return facets;
  }

  void Do(const Mend& mend) {
    // Its own facet first: it may be gone, and nothing else can be asked then.
    const auto isChanged = [&](Index f) { return f >= m_changed.size() || m_changed[f]; };
    if (isChanged(mend.half / 3)) return;
    const std::vector<Index> concerned = Concerned(mend);
    if (std::any_of(concerned.begin(), concerned.end(), isChanged)) {
      m_again.push_back(mend.half / 3);
      return;
    }
    switch (mend.kind) {
      case Mend::Kind::kFlip:
        if (!m_mesh.CanFlip(mend.half)) return;
        m_mesh.Flip(mend.half);
        break;
      case Mend::Kind::kJoin:
        if (!m_mesh.CanCollapse(mend.half)) return;
        m_mesh.Collapse(mend.half);
        break;
      case Mend::Kind::kMove:
        m_mesh.MoveTo(m_mesh.Origin(mend.half), mend.at);
        break;
      case Mend::Kind::kSplit:
        m_mesh.SplitEdge(mend.half, mend.at);
        break;
      case Mend::Kind::kPoint:
        m_mesh.SplitFacet(mend.half / 3, mend.at);
        break;
      case Mend::Kind::kNone:
        return;
    }
    Past past;
    for (const Index facet : concerned) {
      past.mends = std::max(past.mends, m_past[facet].mends);
      past.isShaken = past.isShaken || m_past[facet].isShaken;
    }
    past.isShaken = past.isShaken || mend.gain <= 0;
    for (const Index facet : concerned) {
      m_changed[facet] = true;
      m_past[facet] = past;
    }
    m_past.resize(m_mesh.FacetCount(), past);
  }

  HalfEdgeMesh& m_mesh;
  const OffsetMakers& m_makers;
  OffsetLimits m_limits;
  const std::function<void()>& m_watch;
  std::vector<bool> m_changed, m_touched;
  std::vector<Past> m_past;  // by facet
  std::vector<Index> m_again;
};

}  // namespace

std::vector<Index> MendFolds(HalfEdgeMesh& mesh, const OffsetMakers& makers,
                             const OffsetLimits& limits, const std::vector<Index>& suspects,
                             const std::function<void()>& watch) {
  return Ward(mesh, makers, limits, watch).Treat(suspects);
}

}  // namespace kernel

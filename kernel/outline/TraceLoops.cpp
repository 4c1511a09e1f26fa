#include "kernel/outline/TraceLoops.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "kernel/outline/SortAndTell.h"

namespace kernel {
namespace {

using Number = std::uint32_t;
constexpr Number kNone = UINT32_MAX;
constexpr std::size_t kTellInterval = 1U << 16;

class LoopTracer {
 public:
  LoopTracer(std::vector<PlaneEdge> boundary, const std::function<void()>& tell)
      : m_edges(std::move(boundary)), m_tell(tell) {
    SortAndTell(m_edges, m_tell, [](const PlaneEdge& a, const PlaneEdge& b) {
      return SamePoint(a.from, b.from) ? ComesBefore(a.to, b.to) : ComesBefore(a.from, b.from);
    });
    for (Number i = 0; i < m_edges.size(); ++i) {
      if (i == 0 || !SamePoint(m_edges[i - 1].from, m_edges[i].from)) m_first.push_back(i);
    }
    m_first.push_back(static_cast<Number>(m_edges.size()));
    m_used.assign(m_edges.size(), false);
    m_inPath.assign(m_first.size(), kNone);
  }

  std::vector<Loop> Run() {
    for (Number vertex = 0; vertex + 1 < m_first.size(); ++vertex) {
      for (Number i = m_first[vertex]; i < m_first[vertex + 1]; ++i) {
        if (!m_used[i]) Walk(vertex, i);
      }
    }
    return std::move(m_loops);
  }

 private:
  const Point2& Place(Number vertex) const { return m_edges[m_first[vertex]].from; }

  Number VertexAt(const Point2& point) const {
    const auto end = m_first.end() - 1;
    const auto found = std::lower_bound(
        m_first.begin(), end, point,
        [&](Number i, const Point2& p) { return ComesBefore(m_edges[i].from, p); });
    return static_cast<Number>(found - m_first.begin());
  }

  void Walk(Number vertex, Number edge) {
    Push(vertex);
    while (edge != kNone) {
      if (++m_walked % kTellInterval == 0) m_tell();
      m_used[edge] = true;
      const Point2 from = m_edges[edge].from;
      vertex = VertexAt(m_edges[edge].to);
      // A loop ends wherever the path meets itself, so that none touches itself.
      if (m_inPath[vertex] != kNone) {
        CutLoop(m_inPath[vertex]);
      } else {
        Push(vertex);
      }
      edge = NextFrom(vertex, from);
    }
    for (const Number left : m_path) m_inPath[left] = kNone;
    m_path.clear();
  }

  void Push(Number vertex) {
    m_inPath[vertex] = static_cast<Number>(m_path.size());
    m_path.push_back(vertex);
  }

  // The path from `position` on is a loop; its first vertex stays in the path.
  void CutLoop(Number position) {
    Loop loop;
    for (std::size_t i = position; i < m_path.size(); ++i) {
      loop.push_back(Place(m_path[i]));
      if (i > position) m_inPath[m_path[i]] = kNone;
    }
    m_path.resize(position + 1);
    m_loops.push_back(std::move(loop));
  }

  // The first unused edge clockwise from the way back: between the two lies the inside.
  Number NextFrom(Number vertex, const Point2& back) const {
    Number best = kNone;
    for (Number i = m_first[vertex]; i < m_first[vertex + 1]; ++i) {
      if (m_used[i]) continue;
      if (best == kNone || ComesClockwise(back, i, best)) best = i;
    }
    return best;
  }

  // Whether edge a comes before edge b clockwise from the direction to `back`.
  bool ComesClockwise(const Point2& back, Number a, Number b) const {
    const Point2& at = m_edges[a].from;
    const int halfA = HalfTurn(at, back, m_edges[a].to), halfB = HalfTurn(at, back, m_edges[b].to);
    if (halfA != halfB) return halfA < halfB;
    return OrientationSign(at, m_edges[a].to, m_edges[b].to) < 0;
  }

  // 0: less than half a turn clockwise, 1: half a turn, 2: more.
  static int HalfTurn(const Point2& at, const Point2& back, const Point2& to) {
    return OrientationSign(at, back, to) + 1;
  }

  std::vector<PlaneEdge> m_edges;
  const std::function<void()>& m_tell;
  std::size_t m_walked = 0;     // edges
  std::vector<Number> m_first;  // of the edges that leave each vertex, and the count of all
  std::vector<bool> m_used;
  std::vector<Number> m_inPath;
  std::vector<Number> m_path;
  std::vector<Loop> m_loops;
};

}  // namespace

double DoubledArea(const Loop& loop) {
  double sum = 0;
  for (std::size_t i = 2; i < loop.size(); ++i) {
    sum += (loop[i - 1].x - loop[0].x) * (loop[i].y - loop[0].y) -
           (loop[i].x - loop[0].x) * (loop[i - 1].y - loop[0].y);
  }
  return sum;
}

double Perimeter(const Loop& loop) {
  double sum = 0;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const Point2 &a = loop[i], &b = loop[i + 1 == loop.size() ? 0 : i + 1];
    sum += std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
  }
  return sum;
}

std::vector<Loop> TraceLoops(std::vector<PlaneEdge> boundary, const std::function<void()>& tell) {
  std::vector<Loop> loops = LoopTracer(std::move(boundary), tell).Run();
  for (Loop& loop : loops) {
    std::rotate(loop.begin(), std::min_element(loop.begin(), loop.end(), ComesBefore), loop.end());
  }
  std::stable_sort(loops.begin(), loops.end(), [](const Loop& a, const Loop& b) {
    if (!SamePoint(a[0], b[0])) return ComesBefore(a[0], b[0]);
    return DoubledArea(a) > DoubledArea(b);
  });
  return loops;
}

}  // namespace kernel

#include "kernel/outline/BoundaryEdges.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "kernel/outline/MeetingEdges.h"
#include "kernel/outline/SortAndTell.h"

namespace kernel {
namespace {

using Number = std::uint32_t;
constexpr Number kTellInterval = 1024;  // edges

// Orders edges that cross one upright line and do not cross each other; finds points among them.
struct IsBelow {
  using is_transparent = void;
  const std::vector<PlaneEdge>* edges;

  bool operator()(Number edge, const Point2& point) const {
    const PlaneEdge& e = (*edges)[edge];
    return OrientationSign(e.from, e.to, point) > 0;
  }
  bool operator()(const Point2& point, Number edge) const {
    const PlaneEdge& e = (*edges)[edge];
    return OrientationSign(e.from, e.to, point) < 0;
  }
  bool operator()(Number a, Number b) const {
    const PlaneEdge &below = (*edges)[a], &above = (*edges)[b];
    if (SamePoint(below.from, above.from)) {
      return OrientationSign(below.from, below.to, above.to) > 0;
    }
    if (ComesBefore(below.from, above.from)) {
      return OrientationSign(below.from, below.to, above.from) > 0;
    }
    return OrientationSign(above.from, above.to, below.from) < 0;
  }
};

class LineSweep {
 public:
  LineSweep(const std::vector<PlaneEdge>& edges, const std::function<void()>& tell)
      : m_edges(edges),
        m_tell(tell),
        m_line(IsBelow{&edges}),
        m_places(edges.size()),
        m_above(edges.size()),
        m_byEnd(edges.size()) {
    std::iota(m_byEnd.begin(), m_byEnd.end(), 0U);
    SortAndTell(m_byEnd, m_tell, [&](Number a, Number b) {
      const Point2 &ofA = edges[a].to, &ofB = edges[b].to;
      return SamePoint(ofA, ofB) ? a < b : ComesBefore(ofA, ofB);
    });
  }

  std::optional<std::vector<PlaneEdge>> Run() {
    // Edges come sorted by their first points.
    for (Number begin = 0, told = 0; begin < m_edges.size();) {
      if (begin >= told) {
        m_tell();
        told = begin + kTellInterval;
      }
      const Point2& point = m_edges[begin].from;
      Number end = begin + 1;
      while (end < m_edges.size() && SamePoint(m_edges[end].from, point)) ++end;
      while (m_ended < m_byEnd.size() && !ComesBefore(point, m_edges[m_byEnd[m_ended]].to)) {
        if (!TakeOut(m_byEnd[m_ended++])) return std::nullopt;
      }
      if (!PutIn(begin, end)) return std::nullopt;
      begin = end;
    }
    while (m_ended < m_byEnd.size()) {
      if (!TakeOut(m_byEnd[m_ended++])) return std::nullopt;
    }
    return std::move(m_boundary);
  }

 private:
  using Line = std::set<Number, IsBelow>;

  // False when the edges that become neighbours meet.
  bool TakeOut(Number edge) {
    const auto next = m_line.erase(m_places[edge]);
    if (next == m_line.end() || next == m_line.begin()) return true;
    return !MeetBeyondEnds(m_edges[*std::prev(next)], m_edges[*next]);
  }

  // The edges [begin, end) start at one point. False when they or one of them and a neighbour meet.
  bool PutIn(Number begin, Number end) {
    m_starting.resize(end - begin);
    std::iota(m_starting.begin(), m_starting.end(), begin);
    std::sort(m_starting.begin(), m_starting.end(), m_line.key_comp());
    const auto next = m_line.lower_bound(m_edges[begin].from);
    Winding winding;
    if (next != m_line.begin()) winding = m_above[*std::prev(next)];
    if (!StartsApart(next)) return false;
    for (const Number edge : m_starting) {
      m_places[edge] = m_line.insert(next, edge);
      const bool insideBelow = winding.IsInside();
      winding += m_edges[edge].step;
      m_above[edge] = winding;
      if (winding.IsInside() != insideBelow) AddToBoundary(m_edges[edge], insideBelow);
    }
    return true;
  }

  // Whether the edges that start have no more than that start in common with each other, with the
  // one in the line above it and with the one below.
  bool StartsApart(Line::iterator next) const {
    for (std::size_t i = 1; i < m_starting.size(); ++i) {
      if (MeetBeyondEnds(m_edges[m_starting[i - 1]], m_edges[m_starting[i]])) return false;
    }
    const PlaneEdge &lowest = m_edges[m_starting.front()], &highest = m_edges[m_starting.back()];
    if (next != m_line.end() && MeetBeyondEnds(m_edges[*next], highest)) return false;
    return next == m_line.begin() || !MeetBeyondEnds(m_edges[*std::prev(next)], lowest);
  }

  void AddToBoundary(const PlaneEdge& edge, bool insideBelow) {
    const Winding once{1, 0};
    if (insideBelow) {
      m_boundary.push_back({edge.to, edge.from, once});
    } else {
      m_boundary.push_back({edge.from, edge.to, once});
    }
  }

  const std::vector<PlaneEdge>& m_edges;
  const std::function<void()>& m_tell;
  Line m_line;
  std::vector<Line::iterator> m_places;
  std::vector<Winding> m_above;
  std::vector<Number> m_byEnd, m_starting;
  std::size_t m_ended = 0;
  std::vector<PlaneEdge> m_boundary;
};

}  // namespace

std::optional<std::vector<PlaneEdge>> BoundaryEdges(const std::vector<PlaneEdge>& edges,
                                                    const std::function<void()>& tell) {
  return LineSweep(edges, tell).Run();
}

}  // namespace kernel

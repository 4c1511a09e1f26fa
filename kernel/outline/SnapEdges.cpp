#include "kernel/outline/SnapEdges.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "kernel/outline/EdgeTree.h"
#include "kernel/outline/MeetingEdges.h"
#include "kernel/outline/SortAndTell.h"

namespace kernel {
namespace {

constexpr std::size_t kTellInterval = 1024;  // edges
// So many edges are looked through faster than a tree of them is made.
constexpr std::size_t kFew = 200;

// Above the relative error of a difference of two products of exact differences.
constexpr double kRounding = 4e-16;

// Where the edges cross, rounded to the grid. Nearly parallel ones have no reliable quotient, but
// wherever it is put within both of them they are less than a cell apart.
Point2 RoundedCrossing(const PlaneEdge& a, const PlaneEdge& b) {
  const double ax = a.to.x - a.from.x, ay = a.to.y - a.from.y;
  const double bx = b.to.x - b.from.x, by = b.to.y - b.from.y;
  const double quotient =
      ((b.from.x - a.from.x) * by - (b.from.y - a.from.y) * bx) / (ax * by - ay * bx);
  const double t = quotient > 0 ? std::min(quotient, 1.0) : 0;  // 0 also for no number
  const Box2 box = Box2::Of(b);
  return {std::clamp(std::round(a.from.x + t * ax), box.lowX, box.highX),
          std::clamp(std::round(a.from.y + t * ay), box.lowY, box.highY)};
}

// Whether the edge's line passes through the cell around the point, of side 1. The corners are
// halves, which double as exactly as whole numbers do.
bool LinePassesCell(const PlaneEdge& edge, const Point2& point) {
  const double dx = edge.to.x - edge.from.x, dy = edge.to.y - edge.from.y;
  const double left = dx * (point.y - edge.from.y), right = dy * (point.x - edge.from.x);
  const double reach = (std::abs(dx) + std::abs(dy)) / 2;
  const double bound = kRounding * (std::abs(left) + std::abs(right) + reach);
  if (std::abs(left - right) > reach + bound) return false;
  if (std::abs(left - right) < reach - bound) return true;
  int onLeft = 0, onRight = 0;
  for (const double x : {-0.5, 0.5}) {
    for (const double y : {-0.5, 0.5}) {
      const int side = Side(edge, {point.x + x, point.y + y});
      if (side >= 0) ++onLeft;
      if (side <= 0) ++onRight;
    }
  }
  return onLeft > 0 && onRight > 0;
}

Box2 CellAround(const Point2& point) {
  return {point.x - 0.5, point.y - 0.5, point.x + 0.5, point.y + 0.5};
}

class Snapper {
 public:
  Snapper(std::vector<PlaneEdge>& edges, const std::function<void()>& tell)
      : m_edges(edges), m_tell(tell) {}

  void Run() {
    FindCrossings();
    // Between the crossings edges are short and their boxes small, so that few pass a cell's.
    SplitAtStops();
    FindPassed();
    SplitAtStops();
  }

 private:
  struct Stop {
    std::uint32_t edge;
    double along;  // the stop's place along the edge's direction, for the order only
    Point2 point;
  };

  void TellAt(std::size_t i) const {
    if (i % kTellInterval == 0) m_tell();
  }

  // Calls visit(other number) for each edge after this one, in their order, whose box meets its.
  // The edges are sorted, so that those begin no further left.
  template <typename Visit>
  void ForEachBehind(std::uint32_t i, const Visit& visit) const {
    const Box2 box = Box2::Of(m_edges[i]);
    for (std::uint32_t j = i + 1; j < m_edges.size() && m_edges[j].from.x <= box.highX; ++j) {
      if (Box2::Of(m_edges[j]).Meets(box)) visit(j);
    }
  }

  void FindCrossings() {
    if (m_edges.size() <= kFew) {
      for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
        ForEachBehind(i, [&](std::uint32_t j) { AddCrossing(i, j); });
      }
      return;
    }
    const EdgeTree tree(m_edges, m_tell);
    for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
      TellAt(i);
      // An edge may meet thousands.
      tree.ForEachMeeting(Box2::Of(m_edges[i]), [&](std::uint32_t j) {
        TellAt(++m_met);
        if (i < j) AddCrossing(i, j);
      });
    }
  }

  void AddCrossing(std::uint32_t i, std::uint32_t j) {
    const PlaneEdge &a = m_edges[i], &b = m_edges[j];
    if (HasEnd(a, b.from) || HasEnd(a, b.to) || !CrossProperly(a, b)) return;
    const Point2 at = RoundedCrossing(a, b);
    AddStop(i, at);
    AddStop(j, at);
  }

  void AddStop(std::uint32_t e, const Point2& point) {
    const PlaneEdge& edge = m_edges[e];
    if (HasEnd(edge, point)) return;
    const double along = (point.x - edge.from.x) * (edge.to.x - edge.from.x) +
                         (point.y - edge.from.y) * (edge.to.y - edge.from.y);
    m_stops.push_back({e, along, point});
  }

  void FindPassed() {
    const std::vector<Point2> ends = Ends();
    if (m_edges.size() <= kFew) {
      for (std::uint32_t e = 0; e < m_edges.size(); ++e) FindPassedBy(e, ends);
      return;
    }
    const EdgeTree tree(m_edges, m_tell);
    for (std::size_t i = 0; i < ends.size(); ++i) {
      TellAt(i);
      tree.ForEachMeeting(CellAround(ends[i]), [&](std::uint32_t e) {
        if (LinePassesCell(m_edges[e], ends[i])) AddStop(e, ends[i]);
      });
    }
  }

  void FindPassedBy(std::uint32_t e, const std::vector<Point2>& ends) {
    const PlaneEdge& edge = m_edges[e];
    const Box2 box = Box2::Of(edge);
    auto end = std::lower_bound(ends.begin(), ends.end(), box.lowX - 0.5,
                                [](const Point2& point, double x) { return point.x < x; });
    for (; end != ends.end() && end->x <= box.highX + 0.5; ++end) {
      if (CellAround(*end).Meets(box) && LinePassesCell(edge, *end)) AddStop(e, *end);
    }
  }

  std::vector<Point2> Ends() const {
    std::vector<Point2> ends;
    ends.reserve(2 * m_edges.size());
    for (const PlaneEdge& edge : m_edges) {
      ends.push_back(edge.from);
      ends.push_back(edge.to);
    }
    SortAndTell(ends, m_tell, ComesBefore);
    ends.erase(std::unique(ends.begin(), ends.end(), SamePoint), ends.end());
    return ends;
  }

  void SplitAtStops() {
    SortAndTell(m_stops, m_tell, [](const Stop& a, const Stop& b) {
      if (a.edge != b.edge) return a.edge < b.edge;
      if (a.along != b.along) return a.along < b.along;
      return ComesBefore(a.point, b.point);
    });
    const auto same = [](const Stop& a, const Stop& b) {
      return a.edge == b.edge && SamePoint(a.point, b.point);
    };
    m_stops.erase(std::unique(m_stops.begin(), m_stops.end(), same), m_stops.end());
    Split();
    m_stops.clear();
    JoinEqualEdges(m_edges, m_tell);
  }

  void Split() {
    for (std::size_t i = 0; i < m_stops.size();) {
      const std::uint32_t e = m_stops[i].edge;
      const PlaneEdge whole = m_edges[e];
      m_edges[e].to = m_stops[i].point;
      for (; i < m_stops.size() && m_stops[i].edge == e; ++i) {
        const bool last = i + 1 == m_stops.size() || m_stops[i + 1].edge != e;
        m_edges.push_back({m_stops[i].point, last ? whole.to : m_stops[i + 1].point, whole.step});
      }
    }
  }

  std::vector<PlaneEdge>& m_edges;
  const std::function<void()>& m_tell;
  std::vector<Stop> m_stops;
  std::size_t m_met = 0;
};

}  // namespace

void JoinEqualEdges(std::vector<PlaneEdge>& edges, const std::function<void()>& tell) {
  for (PlaneEdge& edge : edges) {
    if (!ComesBefore(edge.to, edge.from)) continue;
    std::swap(edge.from, edge.to);
    edge.step = -edge.step;
  }
  SortAndTell(edges, tell, [](const PlaneEdge& a, const PlaneEdge& b) {
    return SamePoint(a.from, b.from) ? ComesBefore(a.to, b.to) : ComesBefore(a.from, b.from);
  });
  std::size_t kept = 0;
  for (std::size_t i = 0; i < edges.size();) {
    PlaneEdge joined = edges[i++];
    for (; i < edges.size() && SamePoint(edges[i].from, joined.from) &&
           SamePoint(edges[i].to, joined.to);
         ++i) {
      joined.step += edges[i].step;
    }
    if (!joined.step.IsZero() && !SamePoint(joined.from, joined.to)) edges[kept++] = joined;
  }
  edges.resize(kept);
}

void SnapEdges(std::vector<PlaneEdge>& edges, const std::function<void()>& tell) {
  Snapper(edges, tell).Run();
}

}  // namespace kernel

#include "kernel/outline/SnapEdges.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "kernel/common/FatalError.h"
#include "kernel/outline/EdgeTree.h"

namespace kernel {
namespace {

constexpr int kMostRounds = 40;
constexpr std::size_t kTellInterval = 1024;  // edges

// Above the relative error of a difference of two products of exact differences.
constexpr double kRounding = 4e-16;

bool HasEnd(const PlaneEdge& edge, const Point2& point) {
  return SamePoint(edge.from, point) || SamePoint(edge.to, point);
}

int Side(const PlaneEdge& edge, const Point2& point) {
  // Most edges that meet share an end; the exact sum of nothing takes longest.
  if (HasEnd(edge, point)) return 0;
  const double left = (edge.to.x - edge.from.x) * (point.y - edge.from.y);
  const double right = (edge.to.y - edge.from.y) * (point.x - edge.from.x);
  const double bound = kRounding * (std::abs(left) + std::abs(right));
  if (left - right > bound) return 1;
  if (left - right < -bound) return -1;
  return OrientationSign(edge.from, edge.to, point);
}

// Whether the point, which lies on the edge's line, lies inside the edge.
bool LiesWithin(const PlaneEdge& edge, const Point2& point) {
  return ComesBefore(edge.from, point) && ComesBefore(point, edge.to);
}

bool TouchesInside(const PlaneEdge& edge, const Point2& point) {
  return LiesWithin(edge, point) && Side(edge, point) == 0;
}

// Whether the whole of b lies strictly on one side of a's line.
bool LieApart(const PlaneEdge& a, const PlaneEdge& b) {
  const int from = Side(a, b.from);
  return from != 0 && Side(a, b.to) == from;
}

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

class Snapper {
 public:
  Snapper(std::vector<PlaneEdge>& edges, const std::function<void()>& tell)
      : m_edges(edges), m_tell(tell) {}

  // Whether the edges had more in common than ends, which has been changed.
  bool Round() {
    if (!FindCrossings(EdgeTree(m_edges))) return false;
    // Between the crossings edges are short and their boxes small, so that few pass a cell's.
    SplitAtStops();
    FindPassed(EdgeTree(m_edges));
    SplitAtStops();
    return true;
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

  bool FindCrossings(const EdgeTree& tree) {
    bool touching = false;
    for (std::uint32_t i = 0; i < m_edges.size(); ++i) {
      TellAt(i);
      const PlaneEdge& a = m_edges[i];
      tree.ForEachMeeting(Box2::Of(a), [&](std::uint32_t j) {
        if (j <= i) return;
        const PlaneEdge& b = m_edges[j];
        const bool joined = HasEnd(a, b.from) || HasEnd(a, b.to);
        if (!joined && LieApart(a, b)) return;
        if (!joined && CrossProperly(a, b)) {
          const Point2 at = RoundedCrossing(a, b);
          AddStop(i, at);
          AddStop(j, at);
        } else if (!touching) {
          touching = TouchesInside(a, b.from) || TouchesInside(a, b.to) ||
                     TouchesInside(b, a.from) || TouchesInside(b, a.to);
        }
      });
    }
    return touching || !m_stops.empty();
  }

  void AddStop(std::uint32_t e, const Point2& point) {
    const PlaneEdge& edge = m_edges[e];
    if (HasEnd(edge, point)) return;
    const double along = (point.x - edge.from.x) * (edge.to.x - edge.from.x) +
                         (point.y - edge.from.y) * (edge.to.y - edge.from.y);
    m_stops.push_back({e, along, point});
  }

  void FindPassed(const EdgeTree& tree) {
    std::vector<Point2> ends;
    for (const PlaneEdge& edge : m_edges) {
      ends.push_back(edge.from);
      ends.push_back(edge.to);
    }
    std::sort(ends.begin(), ends.end(), ComesBefore);
    ends.erase(std::unique(ends.begin(), ends.end(), SamePoint), ends.end());
    for (std::size_t i = 0; i < ends.size(); ++i) {
      TellAt(i);
      const Point2& point = ends[i];
      const Box2 cell{point.x - 0.5, point.y - 0.5, point.x + 0.5, point.y + 0.5};
      tree.ForEachMeeting(cell, [&](std::uint32_t e) {
        if (LinePassesCell(m_edges[e], point)) AddStop(e, point);
      });
    }
  }

  void SplitAtStops() {
    std::sort(m_stops.begin(), m_stops.end(), [](const Stop& a, const Stop& b) {
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
    JoinEqualEdges(m_edges);
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
};

}  // namespace

bool CrossProperly(const PlaneEdge& a, const PlaneEdge& b) {
  return Side(a, b.from) * Side(a, b.to) < 0 && Side(b, a.from) * Side(b, a.to) < 0;
}

void JoinEqualEdges(std::vector<PlaneEdge>& edges) {
  for (PlaneEdge& edge : edges) {
    if (!ComesBefore(edge.to, edge.from)) continue;
    std::swap(edge.from, edge.to);
    edge.step = -edge.step;
  }
  std::sort(edges.begin(), edges.end(), [](const PlaneEdge& a, const PlaneEdge& b) {
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
  JoinEqualEdges(edges);
  for (int round = 0; Snapper(edges, tell).Round(); ++round) {
    if (round == kMostRounds) throw FatalError("the outline's edges cannot be parted");
  }
}

}  // namespace kernel

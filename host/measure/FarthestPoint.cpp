#include "host/measure/FarthestPoint.h"

#include <algorithm>

namespace host {

namespace {

constexpr double kLeast = 1e-6;  // of the diagonal: nearer is not looked into

bool IsIn(const Ball& ball, const Point& p) { return Length(p - ball.centre) <= ball.radius; }

bool IsInAny(const std::vector<Ball>& balls, const Point& p) {
  return std::any_of(balls.begin(), balls.end(), [&p](const Ball& ball) { return IsIn(ball, p); });
}

}  // namespace

FarthestPoint::FarthestPoint(const formats::Mesh& from, const FacetTree& to, StopAsked stopAsked)
    : m_to(to), m_stopAsked(std::move(stopAsked)) {
  std::vector<Corner> vertices;
  vertices.reserve(from.vertices.size());
  for (const Point& vertex : from.vertices) {
    vertices.push_back(Ask(vertex));
    if (vertices.size() % 1024 == 0 && m_stopAsked()) return;
  }
  m_facets.reserve(from.facets.size());
  for (const formats::Facet& facet : from.facets) {
    const auto at = [&](std::size_t i) {
      return vertices[static_cast<std::size_t>(facet.vertices[i])];
    };
    m_facets.push_back(MakePiece({at(0), at(1), at(2)}));
    if (m_facets.size() % 1024 == 0 && m_stopAsked()) return;
  }
}

FarthestPoint::Corner FarthestPoint::Ask(const Point& place) const {
  const FacetTree::Nearest nearest = m_to.NearestTo(place);
  return {place, nearest.distance, nearest.facet};
}

FarthestPoint::Piece FarthestPoint::MakePiece(const std::array<Corner, 3>& corners) const {
  Piece piece;
  piece.corners = corners;
  piece.centre = Ask(Centroid({corners[0].place, corners[1].place, corners[2].place}));
  for (const Corner& corner : corners) {
    piece.radius = std::max(piece.radius, Length(corner.place - piece.centre.place));
  }
  // The centre's distance grows by no more than the way to a corner.
  piece.bound = piece.centre.distance + piece.radius;
  const auto boundBy = [&](std::int32_t facet) {
    double farthest = 0;
    for (const Corner& corner : corners) {
      farthest = std::max(farthest, m_to.DistanceToFacet(facet, corner.place));
    }
    piece.bound = std::min(piece.bound, farthest);
  };
  boundBy(piece.centre.facet);
  for (const Corner& corner : corners) boundBy(corner.facet);
  return piece;
}

std::array<FarthestPoint::Piece, 4> FarthestPoint::Quarter(const Piece& piece) const {
  const auto& [a, b, c] = piece.corners;
  const Corner ab = Ask(0.5 * (a.place + b.place));
  const Corner bc = Ask(0.5 * (b.place + c.place));
  const Corner ca = Ask(0.5 * (c.place + a.place));
  return {MakePiece({a, ab, ca}), MakePiece({ab, b, bc}), MakePiece({ca, bc, c}),
          MakePiece({ab, bc, ca})};
}

bool FarthestPoint::IsOnSide(const Corner& corner, Side side) const {
  if (side == Side::kAny) return true;
  const double deviation = m_to.SignedDistance(corner.place, {corner.distance, {}, corner.facet});
  return side == Side::kInside ? deviation > 0 : deviation < 0;
}

class FarthestPoint::Run {
 public:
  Run(const FarthestPoint& search, Side side, const std::vector<Ball>& leftOut,
      const Effort& effort)
      : m_search(search), m_side(side), m_leftOut(leftOut), m_effort(effort) {}

  Found Result() {
    for (const Piece& piece : m_search.m_facets) Consider(piece);
    std::size_t quartered = 0;
    while (!m_waiting.empty() && m_waiting.top().bound > Enough()) {
      if (++quartered > m_effort.pieces) break;
      if (quartered % 256 == 0 && m_search.m_stopAsked()) break;
      const Piece piece = m_pieces[m_waiting.top().piece];
      m_waiting.pop();
      for (const Piece& quarter : m_search.Quarter(piece)) Consider(quarter);
    }
    m_found.bound = m_found.distance;
    if (!m_waiting.empty()) m_found.bound = std::max(m_found.bound, m_waiting.top().bound);
    return m_found;
  }

 private:
  struct Waiting {
    double bound;
    std::size_t piece;
    // Equal bounds in the order of their making, so that every run is the same.
    bool operator<(const Waiting& other) const {
      return bound != other.bound ? bound < other.bound : piece > other.piece;
    }
  };

  double Enough() const {
    return std::max(m_found.distance * (1 + m_effort.accuracy), kLeast * m_search.m_to.Diagonal());
  }

  void Consider(const Piece& piece) {
    if (piece.bound <= Enough() || IsCovered(piece)) return;
    TryPoint(piece.centre);
    for (const Corner& corner : piece.corners) TryPoint(corner);
    if (piece.bound <= Enough()) return;
    // Further from the surface than it is large, a piece lies on one side of it.
    if (piece.centre.distance > piece.radius && !m_search.IsOnSide(piece.centre, m_side)) return;
    m_waiting.push({piece.bound, m_pieces.size()});
    m_pieces.push_back(piece);
  }

  bool IsCovered(const Piece& piece) const {
    return std::any_of(m_leftOut.begin(), m_leftOut.end(), [&piece](const Ball& ball) {
      return std::all_of(piece.corners.begin(), piece.corners.end(),
                         [&ball](const Corner& corner) { return IsIn(ball, corner.place); });
    });
  }

  void TryPoint(const Corner& point) {
    if (point.distance <= m_found.distance || IsInAny(m_leftOut, point.place)) return;
    if (!m_search.IsOnSide(point, m_side)) return;
    m_found.distance = point.distance;
    m_found.place = point.place;
  }

  const FarthestPoint& m_search;
  Side m_side;
  const std::vector<Ball>& m_leftOut;
  Effort m_effort;
  Found m_found;
  std::vector<Piece> m_pieces;
  std::priority_queue<Waiting> m_waiting;
};

FarthestPoint::Found FarthestPoint::Search(Side side, const std::vector<Ball>& leftOut,
                                           const Effort& effort) const {
  return Run(*this, side, leftOut, effort).Result();
}

}  // namespace host

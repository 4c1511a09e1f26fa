#include "kernel/compress/SurfaceBound.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "kernel/sweep/NearestOnTriangle.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;

// A piece is not cut any more when it is this small against the tolerance.
constexpr double kSmallestPiece = 1e-3;
// A cut leaves parts that reach this far at least, against the tolerance.
constexpr double kLeastCut = 1e-6;
// More pieces than this would be a waste where there is nothing to prove.
constexpr std::size_t kMostPieces = 2'000'000;
constexpr int kMostSteps = 10'000;

// A convex piece of the triangle that is to be proven near.
class Piece {
 public:
  static constexpr std::size_t kMost = 12;

  explicit Piece(const std::array<Vec3, 3>& corners, Index hint) : m_hint(hint) {
    for (const Vec3& corner : corners) Add(corner);
  }
  explicit Piece(Index hint) : m_hint(hint) {}

  Index Hint() const { return m_hint; }
  void SetHint(Index hint) { m_hint = hint; }
  std::size_t Count() const { return m_count; }
  const Vec3& operator[](std::size_t i) const { return m_corners[i % m_count]; }

  void Add(const Vec3& corner) { m_corners[m_count++] = corner; }
  bool IsFull() const { return m_count == kMost; }

  Vec3 Centre() const {
    Vec3 sum;
    for (std::size_t i = 0; i < m_count; ++i) sum += m_corners[i];
    return sum / static_cast<double>(m_count);
  }

  std::size_t LongestSide() const {
    std::size_t longest = 0;
    double most = -1;
    for (std::size_t i = 0; i < m_count; ++i) {
      const double square = LengthSquared((*this)[i + 1] - m_corners[i]);
      if (square <= most) continue;
      most = square;
      longest = i;
    }
    return longest;
  }

 private:
  std::array<Vec3, kMost> m_corners;
  std::size_t m_count = 0;
  Index m_hint;
};

struct Reach {
  double below, above;
};
Reach ReachBeside(const Piece& piece, const Vec3& on, const Vec3& normal) {
  Reach reach{0, 0};
  for (std::size_t i = 0; i < piece.Count(); ++i) {
    const double above = Dot(normal, piece[i] - on);
    reach.below = std::max(reach.below, -above);
    reach.above = std::max(reach.above, above);
  }
  return reach;
}

// Parts the piece at the plane through `on`; what lies on it belongs to both parts.
void Part(const Piece& piece, const Vec3& on, const Vec3& normal, Piece& below, Piece& above) {
  for (std::size_t i = 0; i < piece.Count(); ++i) {
    const Vec3& a = piece[i];
    const Vec3& b = piece[i + 1];
    const double aAbove = Dot(normal, a - on);
    const double bAbove = Dot(normal, b - on);
    if (aAbove <= 0) below.Add(a);
    if (aAbove >= 0) above.Add(a);
    if ((aAbove < 0 && bAbove > 0) || (aAbove > 0 && bAbove < 0)) {
      const Vec3 between = a + (b - a) * (aAbove / (aAbove - bAbove));
      below.Add(between);
      above.Add(between);
    }
  }
}

Vec3 NormalOf(const std::array<Vec3, 3>& corners) {
  return Normalised(Cross(corners[1] - corners[0], corners[2] - corners[0]));
}

double SquareTo(const std::array<Vec3, 3>& corners, const Vec3& point) {
  return LengthSquared(NearestOnTriangle(corners, point).point - point);
}

bool IsNear(const Piece& piece, const std::array<Vec3, 3>& corners, double squareTolerance) {
  for (std::size_t i = 0; i < piece.Count(); ++i) {
    if (SquareTo(corners, piece[i]) > squareTolerance) return false;
  }
  return true;
}

class Proof {
 public:
  Proof(const SurfaceBound& bound, const HalfEdgeMesh& mesh, double tolerance)
      : m_bound(bound),
        m_mesh(mesh),
        m_square(tolerance * tolerance),
        m_smallest(kSmallestPiece * kSmallestPiece * m_square),
        m_leastCut(kLeastCut * tolerance) {}

  bool Of(const std::array<Vec3, 3>& triangle, Index hint) {
    m_pieces.emplace_back(triangle, hint);
    for (std::size_t looked = 0; !m_pieces.empty(); ++looked) {
      const Piece piece = m_pieces.back();
      m_pieces.pop_back();
      if (IsNear(piece, m_bound.CornersOf(piece.Hint()), m_square)) continue;
      if (looked > kMostPieces || !Cut(piece)) return false;
    }
    return true;
  }

 private:
  // False when the piece is too far away somewhere, or is too small to find out.
  bool Cut(const Piece& piece) {
    const Vec3 centre = piece.Centre();
    const Index facet = m_bound.WalkTowards(centre, piece.Hint());
    const std::array<Vec3, 3> corners = m_bound.CornersOf(facet);
    if (SquareTo(corners, centre) > m_square) return false;
    if (facet != piece.Hint() && IsNear(piece, corners, m_square)) return true;
    Piece rest = piece;
    rest.SetHint(facet);
    const Vec3 normal = NormalOf(corners);
    for (Index i = 0; i < 3; ++i) {
      const Index beyond = m_mesh.Twin(3 * facet + i) / 3;
      const Vec3 up = normal + NormalOf(m_bound.CornersOf(beyond));
      const Vec3 along = corners[(i + 1) % 3] - corners[i];
      const Vec3 aside = Normalised(Cross(along, LengthSquared(up) > 0 ? up : normal));
      const Reach reach = ReachBeside(rest, corners[i], aside);
      // Only a cut that makes both parts smaller brings the end nearer.
      if (rest.IsFull() || std::min(reach.below, reach.above) < m_leastCut) continue;
      Piece inside(facet);
      Piece outside(beyond);
      Part(rest, corners[i], aside, inside, outside);
      m_pieces.push_back(outside);
      rest = inside;
    }
    return IsNear(rest, corners, m_square) || Halve(rest);
  }

  // Cuts the piece across the middle of its longest side.
  bool Halve(const Piece& piece) {
    const std::size_t side = piece.LongestSide();
    const Vec3 along = piece[side + 1] - piece[side];
    if (LengthSquared(along) < m_smallest || piece.IsFull()) return false;
    Piece below(piece.Hint());
    Piece above(piece.Hint());
    Part(piece, 0.5 * (piece[side] + piece[side + 1]), along, below, above);
    m_pieces.push_back(below);
    m_pieces.push_back(above);
    return true;
  }

  const SurfaceBound& m_bound;
  const HalfEdgeMesh& m_mesh;
  double m_square, m_smallest, m_leastCut;
  std::vector<Piece> m_pieces;
};

}  // namespace

std::array<Vec3, 3> SurfaceBound::CornersOf(Index facet) const {
  return {m_mesh.At(m_mesh.Origin(3 * facet)), m_mesh.At(m_mesh.Origin(3 * facet + 1)),
          m_mesh.At(m_mesh.Origin(3 * facet + 2))};
}

Index SurfaceBound::WalkTowards(const Vec3& point, Index hint) const {
  Index best = hint;
  PointOnTriangle found = NearestOnTriangle(CornersOf(best), point);
  double least = LengthSquared(found.point - point);
  const auto tryFacet = [&](Index facet) {
    const PointOnTriangle other = NearestOnTriangle(CornersOf(facet), point);
    const double square = LengthSquared(other.point - point);
    if (square >= least) return false;
    best = facet;
    found = other;
    least = square;
    return true;
  };
  for (int step = 0; step < kMostSteps; ++step) {
    const auto part = static_cast<Index>(found.part.index);
    const Index from = 3 * best + part;
    bool moved = false;
    if (found.part.kind == TrianglePart::Kind::kEdge) moved = tryFacet(m_mesh.Twin(from) / 3);
    if (found.part.kind == TrianglePart::Kind::kCorner) {
      for (Index half = m_mesh.Around(from); half != from; half = m_mesh.Around(half)) {
        if (tryFacet(half / 3)) moved = true;
      }
    }
    // A needle may not tell which of its parts is nearest.
    const Index first = from - part;
    for (Index corner = first; !moved && corner < first + 3; ++corner) {
      for (Index half = m_mesh.Around(corner); half != corner && !moved;
           half = m_mesh.Around(half)) {
        moved = tryFacet(half / 3);
      }
    }
    if (!moved) break;
  }
  return best;
}

bool SurfaceBound::IsWithin(const std::array<Vec3, 3>& triangle, double tolerance,
                            Index hint) const {
  return Proof(*this, m_mesh, tolerance).Of(triangle, hint);
}

}  // namespace kernel

#include "kernel/compare/BandProof.h"

#include <algorithm>
#include <cmath>

#include "kernel/compare/Stopped.h"

namespace kernel {
namespace {

// More corners than this and a piece is parted before it is cut on.
constexpr std::size_t kManyCorners = 7;
// A piece this many times longer than its nearest stock facet is halved rather than cut.
constexpr double kMuchLonger = 4;
// A stock facet of less height over its length has no normal to rely on.
constexpr double kThin = 1e-5;
// A cut that takes off less, of the slack of the bands, is one by rounding, and is not made.
constexpr double kThinCut = 0.1;
// What a cut along a facet's sides takes off a piece must be more than this share of its area.
constexpr double kFairShare = 0.05;
// Pieces of pieces: halved until they are fine and cut along a few facets, none comes near this.
constexpr int kDeepest = 200;

double DoubleArea(const ConvexPolygon& piece) {
  double area = 0;
  for (std::size_t i = 2; i < piece.Count(); ++i) {
    area += Length(Cross(piece.At(i - 1) - piece.At(0), piece.At(i) - piece.At(0)));
  }
  return area;
}

}  // namespace

bool BandProof::Holds(const Corners& facet, const std::array<Deviation, 3>& deviations,
                      std::size_t band) const {
  const double low = m_bands.Low(band);
  const double high = m_bands.High(band);
  // Every point of a triangle lies at most 1 / sqrt(3) of its longest side from a corner: from it
  // two corners are seen at 120 degrees or more.
  double side = 0;
  for (std::size_t i = 0; i < 3; ++i) side = std::max(side, Length(facet[(i + 1) % 3] - facet[i]));
  const auto [least, most] =
      std::minmax({deviations[0].value, deviations[1].value, deviations[2].value});
  const double reach = side * 0.57735027;
  if (least - reach > low && most + reach <= high) return true;

  Allowed allowed{high, -low};
  if (low >= 0) {
    if (low > 0 && m_stock.ComesWithin(facet, low)) return false;
    allowed.outside = allowed.inside;
  } else if (high < 0) {
    if (m_stock.ComesWithin(facet, -high)) return false;
    allowed.inside = allowed.outside;
  }
  return IsHeld(ConvexPolygon(facet), allowed, deviations[0].slot, 0);
}

bool BandProof::IsHeld(const ConvexPolygon& piece, Allowed allowed, std::uint32_t guess,
                       int depth) const {
  if (m_stopped) throw Stopped();
  const Vec3 middle = piece.Middle();
  std::size_t furthest = 0;
  const double radius = piece.Radius(middle, furthest);
  const StockTree::Nearest nearest = m_stock.FindNearest(middle, guess);
  const double distance = std::sqrt(nearest.square);
  const double least = std::min(allowed.inside, allowed.outside);
  if (!allowed.SameBothWays() && (distance > radius || distance > least)) {
    const bool isInside = m_stock.IsInside(middle);
    if (!allowed.Contains(distance, isInside)) return false;
    // The surface does not come into the piece: all of it is on the middle's side.
    if (distance > radius) {
      (isInside ? allowed.outside : allowed.inside) = isInside ? allowed.inside : allowed.outside;
    }
  }
  const double high = std::min(allowed.inside, allowed.outside);
  if (allowed.SameBothWays() && distance > high) return false;
  if (distance + radius <= high || LiesAbove(piece, nearest.slot, high)) return true;
  if (depth == kDeepest) return false;
  const auto isHeld = [&](const ConvexPolygon& part) {
    return part.Count() == 0 || IsHeld(part, allowed, nearest.slot, depth + 1);
  };
  if (piece.Count() > kManyCorners) {
    const ConvexPolygon::Sides halves = piece.Halves();
    return isHeld(halves.above) && isHeld(halves.below);
  }
  const bool isFine = radius < m_finest;
  std::array<ConvexPolygon, 3> rest;
  if (2 * radius <= kMuchLonger * m_stock.FrameOf(nearest.slot).Length() &&
      CutOff(piece, nearest.slot, high, isFine ? 0 : kFairShare, rest)) {
    return std::all_of(rest.begin(), rest.end(), isHeld);
  }
  if (isFine) return false;
  const ConvexPolygon::Sides halves = piece.Cut(middle, piece.At(furthest) - middle);
  return isHeld(halves.above) && isHeld(halves.below);
}

bool BandProof::LiesAbove(const ConvexPolygon& piece, std::uint32_t slot, double high) const {
  const TriangleFrame& frame = m_stock.FrameOf(slot);
  for (std::size_t i = 0; i < piece.Count(); ++i) {
    if (frame.SquaredDistance(piece.At(i)) > high * high) return false;
  }
  return true;
}

bool BandProof::CutOff(const ConvexPolygon& piece, std::uint32_t slot, double high, double share,
                       std::array<ConvexPolygon, 3>& rest) const {
  if (m_stock.FrameOf(slot).Height() < kThin * m_stock.FrameOf(slot).Length()) return false;
  const Corners corners = m_stock.CornersOf(slot);
  const Vec3 normal = Normalised(Cross(corners[1] - corners[0], corners[2] - corners[0]));
  ConvexPolygon above = piece;
  for (std::size_t i = 0; i < 3; ++i) {
    const Vec3 inwards = Normalised(Cross(normal, corners[(i + 1) % 3] - corners[i]));
    const ConvexPolygon::Sides sides = above.Cut(corners[i], inwards, kThinCut * m_bands.Slack());
    above = sides.above;
    rest[i] = sides.below;
    if (above.Count() == 0) return false;
  }
  if (!(DoubleArea(above) > share * DoubleArea(piece))) return false;
  for (std::size_t i = 0; i < above.Count(); ++i) {
    if (std::abs(Dot(normal, above.At(i) - corners[0])) > high) return false;
  }
  return true;
}

}  // namespace kernel

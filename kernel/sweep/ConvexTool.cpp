#include "kernel/sweep/ConvexTool.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

ProfilePoint Along(const ProfilePiece& line) { return {-line.startNormal.z, line.startNormal.r}; }

double RadiusOn(const ProfilePiece& piece, double z) {
  if (!piece.isArc) {
    return piece.start.r + (z - piece.start.z) * (-piece.startNormal.z / piece.startNormal.r);
  }
  const double height = z - piece.centre.z;
  return piece.centre.r +
         std::sqrt(std::max(0.0, (piece.radius - height) * (piece.radius + height)));
}

double HeightOn(const ProfilePiece& piece, double r) {
  if (!piece.isArc) {
    return piece.start.z + (r - piece.start.r) * (piece.startNormal.r / -piece.startNormal.z);
  }
  const double reach = r - piece.centre.r;
  return piece.centre.z - std::sqrt(std::max(0.0, (piece.radius - reach) * (piece.radius + reach)));
}

// True when the piece has a point, other than its ends, whose normal passes through `point`.
bool NearestOnPiece(const ProfilePiece& piece, const ProfilePoint& point, ProfileNearest& nearest) {
  if (!piece.isArc) {
    const ProfilePoint offset = point - piece.start;
    const ProfilePoint along = Along(piece);
    if (Dot(offset, along) < 0) return false;
    if (std::isfinite(piece.end.z) && Dot(point - piece.end, along) > 0) return false;
    nearest = {Dot(offset, piece.startNormal), piece.startNormal};
    return true;
  }
  const ProfilePoint offset = point - piece.centre;
  if (Cross(piece.startNormal, offset) < 0 || Cross(offset, piece.endNormal) < 0) return false;
  const double reach = std::sqrt(Dot(offset, offset));
  if (reach == 0) return false;
  nearest = {reach - piece.radius, (1 / reach) * offset};
  return true;
}

// Where two pieces meet, with their normals there. A point whose nearest is such a corner lies
// outside, except by rounding where the pieces join smoothly; either face can tell.
ProfileNearest NearestAtCorner(const ProfilePoint& corner, const ProfilePoint& below,
                               const ProfilePoint& above, const ProfilePoint& point) {
  const ProfilePoint offset = point - corner;
  const double reach = std::sqrt(Dot(offset, offset));
  const bool outside = Dot(offset, below) > 0 || Dot(offset, above) > 0;
  // Within rounding of the corner the offset has no direction of its own.
  const double rounding = 1e-14 * (std::abs(corner.r) + std::abs(corner.z));
  if (reach <= rounding) {
    const ProfilePoint between = below + above;
    const double length = std::hypot(between.r, between.z);
    const ProfilePoint normal = length > 0 ? (1 / length) * between : above;
    return {outside ? reach : -reach, normal};
  }
  return outside ? ProfileNearest{reach, (1 / reach) * offset}
                 : ProfileNearest{-reach, (-1 / reach) * offset};
}

// The largest dot product of `direction` with a point of the piece below `top`.
double SupportOfPiece(const ProfilePiece& piece, const ProfilePoint& direction, double top) {
  double best = Dot(direction, piece.start);
  const ProfilePoint end = piece.end.z <= top ? piece.end : ProfilePoint{RadiusOn(piece, top), top};
  best = std::max(best, Dot(direction, end));
  if (piece.isArc && Cross(piece.startNormal, direction) > 0 &&
      Cross(direction, piece.endNormal) > 0) {
    const double length = std::hypot(direction.r, direction.z);
    const ProfilePoint touched = piece.centre + (piece.radius / length) * direction;
    if (touched.z <= top) best = std::max(best, Dot(direction, touched));
  }
  return best;
}

}  // namespace

std::variant<ConvexTool, std::string> ConvexTool::Make(const formats::ConvexTool& parameters) {
  std::variant<ConvexProfile, std::string> profile = BuildConvexProfile(parameters);
  if (auto* error = std::get_if<std::string>(&profile)) return std::move(*error);
  return ConvexTool(std::get<ConvexProfile>(std::move(profile)));
}

ConvexTool::ConvexTool(ConvexProfile profile)
    : m_profile(std::move(profile)), m_widest(m_profile.back().end.r) {}

double ConvexTool::RadiusAt(double z) const {
  if (z < 0) return 0;
  for (const ProfilePiece& piece : m_profile) {
    // A flat face has no height of its own: its radius is that of what follows.
    if (z <= piece.end.z && piece.end.z > piece.start.z) return RadiusOn(piece, z);
  }
  return m_widest;
}

double ConvexTool::HeightAt(double r) const {
  for (const ProfilePiece& piece : m_profile) {
    if (r <= piece.end.r && piece.end.r > piece.start.r) return HeightOn(piece, r);
  }
  return ProfileTop();
}

std::optional<double> ConvexTool::BallCentre() const {
  const ProfilePiece& tip = m_profile.front();
  if (!tip.isArc || tip.centre.r != 0) return std::nullopt;
  return tip.centre.z;
}

double ConvexTool::CharacteristicRadius() const {
  double smallest = kInfinity;
  for (const ProfilePiece& piece : m_profile) {
    if (piece.isArc) smallest = std::min(smallest, piece.radius);
    const bool isWall = !piece.isArc && piece.start.r > 0;
    if (isWall) smallest = std::min(smallest, piece.start.r / piece.startNormal.r);
  }
  return smallest;
}

ProfileNearest ConvexTool::Nearest(const ProfilePoint& point) const {
  ProfileNearest nearest{kInfinity, {}};
  // Ties go to the inside of a piece, whose sign is beyond doubt.
  for (const ProfilePiece& piece : m_profile) {
    ProfileNearest candidate;
    if (NearestOnPiece(piece, point, candidate) &&
        std::abs(candidate.distance) < std::abs(nearest.distance)) {
      nearest = candidate;
    }
  }
  ProfilePoint below{-m_profile.front().startNormal.r, m_profile.front().startNormal.z};
  for (const ProfilePiece& piece : m_profile) {
    const ProfilePoint offset = point - piece.start;
    const double square = Dot(offset, offset);
    if (square < nearest.distance * nearest.distance) {
      const ProfileNearest candidate =
          NearestAtCorner(piece.start, below, piece.startNormal, point);
      if (std::abs(candidate.distance) < std::abs(nearest.distance)) nearest = candidate;
    }
    below = piece.endNormal;
  }
  return nearest;
}

double ConvexTool::Support(const ProfilePoint& direction, double top) const {
  double best = -kInfinity;
  for (const ProfilePiece& piece : m_profile) {
    if (piece.start.z > top) break;
    best = std::max(best, SupportOfPiece(piece, direction, top));
  }
  return best;
}

}  // namespace kernel

// Notation: c corner radius, f flat radius, a lower and b upper taper angle, h taper height, u
// upper bevel radius. The lower face runs along (sin a, cos a) from the tip, the wall along (sin b,
// cos b). The corner arc's centre (f, z) is at distance c from the lower face: f cos a - z sin a =
// -c. Sharp edges (c = 0) come out of the same formulas with an arc of no length, which is left
// out.
#include "kernel/sweep/ConvexProfile.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The outward normal of a face that stands at `degrees` to the axis. Exact at 0 and 90, where the
// rounded value of pi would tilt flat floors and straight walls.
ProfilePoint FaceNormal(double degrees) {
  if (degrees == 0) return {1, 0};
  if (degrees == 90) return {0, -1};
  const double angle = degrees * (std::numbers::pi / 180);
  return {std::cos(angle), -std::sin(angle)};
}

ProfilePoint AlongFace(const ProfilePoint& normal) { return {-normal.z, normal.r}; }

ProfilePiece Line(const ProfilePoint& start, const ProfilePoint& end, const ProfilePoint& normal) {
  return {.isArc = false, .start = start, .end = end, .startNormal = normal, .endNormal = normal};
}

ProfilePiece UnboundedLine(const ProfilePoint& start, const ProfilePoint& normal) {
  const ProfilePoint end{normal.z == 0 ? start.r : kInfinity, kInfinity};
  return Line(start, end, normal);
}

ProfilePiece Arc(const ProfilePoint& centre, double radius, const ProfilePoint& startNormal,
                 const ProfilePoint& endNormal) {
  return {.isArc = true,
          .start = centre + radius * startNormal,
          .end = centre + radius * endNormal,
          .startNormal = startNormal,
          .endNormal = endNormal,
          .centre = centre,
          .radius = radius};
}

std::string CheckLengths(const formats::ConvexTool& tool) {
  struct Field {
    const char* name;
    double value;
  };
  for (const Field& field :
       {Field{"corner radius", tool.cornerRadius}, Field{"flat radius", tool.flatRadius},
        Field{"taper height", tool.taperHeight},
        Field{"upper bevel radius", tool.upperBevelRadius}}) {
    if (!std::isfinite(field.value)) return std::string(field.name) + " is not a finite number";
    if (field.value < 0) return std::string(field.name) + " is negative";
  }
  return {};
}

std::string CheckAngles(double upper, double lower) {
  if (!std::isfinite(upper)) return "upper taper angle is not a finite number";
  if (!std::isfinite(lower)) return "lower taper angle is not a finite number";
  if (upper < 0 || upper >= 90) return "upper taper angle is outside 0 to 90 degrees";
  if (lower <= 0 || lower > 90) return "lower taper angle is outside 0 to 90 degrees";
  if (upper > lower) return "upper taper angle is above the lower taper angle";
  return {};
}

// Adds what stands above the wall's start: the wall, its bevelled upper edge and the cylinder.
std::string AddWall(const formats::ConvexTool& tool, const ProfilePoint& start,
                    const ProfilePoint& normal, ConvexProfile& profile) {
  const bool isCylinder = normal.z == 0;
  if (tool.taperHeight == 0 || isCylinder) {
    if (tool.taperHeight != 0 && tool.taperHeight < start.z) {
      return "taper height is below the start of the wall";
    }
    profile.push_back(UnboundedLine(start, normal));
    return {};
  }
  if (tool.taperHeight < start.z) return "taper height is below the start of the wall";
  const ProfilePoint outwards{1, 0};
  const double length = (tool.taperHeight - start.z) / normal.r;
  const ProfilePoint edge{start.r + length * -normal.z, tool.taperHeight};
  // Distance from the edge to where the bevel touches either side: u tan(b / 2).
  const double tangentLength = tool.upperBevelRadius * (-normal.z / (1 + normal.r));
  if (tangentLength > length) return "upper bevel radius does not fit on the wall";
  if (tangentLength < length) {
    profile.push_back(Line(start, edge - tangentLength * AlongFace(normal), normal));
  }
  if (tangentLength == 0) {
    profile.push_back(UnboundedLine(edge, outwards));
    return {};
  }
  const ProfilePoint centre{edge.r - tool.upperBevelRadius, edge.z + tangentLength};
  profile.push_back(Arc(centre, tool.upperBevelRadius, normal, outwards));
  profile.push_back(UnboundedLine({edge.r, centre.z}, outwards));
  return {};
}

// Neighbours are computed each on its own; this makes them meet in the very same doubles.
void JoinEnds(ConvexProfile& profile) {
  for (std::size_t i = 1; i < profile.size(); ++i) profile[i - 1].end = profile[i].start;
}

bool IsFinite(const ConvexProfile& profile) {
  for (const ProfilePiece& piece : profile) {
    if (!std::isfinite(piece.start.r) || !std::isfinite(piece.start.z)) return false;
  }
  return true;
}

}  // namespace

std::variant<ConvexProfile, std::string> BuildConvexProfile(const formats::ConvexTool& tool) {
  const double lowerDegrees = tool.lowerTaperAngle == 0 ? 90 : tool.lowerTaperAngle;
  if (std::string error = CheckLengths(tool); !error.empty()) return error;
  if (std::string error = CheckAngles(tool.upperTaperAngle, lowerDegrees); !error.empty()) {
    return error;
  }
  const ProfilePoint lower = FaceNormal(lowerDegrees);
  const ProfilePoint wall = FaceNormal(tool.upperTaperAngle);
  const double c = tool.cornerRadius;
  const double f = tool.flatRadius;
  const ProfilePoint centre{f, (c + f * lower.r) / -lower.z};

  ConvexProfile profile;
  const ProfilePoint lowerEnd = centre + c * lower;
  if (lowerEnd.r > 0) {
    profile.push_back(Line({0, 0}, {lowerEnd.r, lower.r == 0 ? 0 : lowerEnd.z}, lower));
  }
  if (c > 0 && tool.upperTaperAngle < lowerDegrees) profile.push_back(Arc(centre, c, lower, wall));
  if (std::string error = AddWall(tool, centre + c * wall, wall, profile); !error.empty()) {
    return error;
  }
  JoinEnds(profile);
  if (!IsFinite(profile)) return "the tool's lengths and angles give a shape out of range";
  if (profile.back().end.r == 0)
    return "the tool has no width (corner radius and flat radius are 0)";
  return profile;
}

}  // namespace kernel

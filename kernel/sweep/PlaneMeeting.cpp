#include "kernel/sweep/PlaneMeeting.h"

#include <cmath>

namespace kernel {
namespace {

constexpr double kLeastSine = 0.04;
constexpr double kLeastVolume = 0.004;  // of the three normals' parallelepiped

double Gap(const TangentPlane& plane, const Vec3& from) {
  return Dot(plane.normal, plane.point - from);
}

std::optional<Vec3> MeetInLine(const TangentPlane& a, const TangentPlane& b, const Vec3& from) {
  const double cosine = Dot(a.normal, b.normal);
  const double sineSquared = LengthSquared(Cross(a.normal, b.normal));
  if (sineSquared < kLeastSine * kLeastSine) return std::nullopt;
  const double gapA = Gap(a, from);
  const double gapB = Gap(b, from);
  return from + a.normal * ((gapA - cosine * gapB) / sineSquared) +
         b.normal * ((gapB - cosine * gapA) / sineSquared);
}

std::optional<Vec3> MeetInPoint(const TangentPlane& a, const TangentPlane& b, const TangentPlane& c,
                                const Vec3& from) {
  const Vec3 bc = Cross(b.normal, c.normal);
  const double volume = Dot(a.normal, bc);
  if (std::abs(volume) < kLeastVolume) return std::nullopt;
  return from + (bc * Gap(a, from) + Cross(c.normal, a.normal) * Gap(b, from) +
                 Cross(a.normal, b.normal) * Gap(c, from)) /
                    volume;
}

}  // namespace

std::optional<Vec3> MeetPlanes(std::span<const TangentPlane> planes, const Vec3& from) {
  if (planes.size() == 1) return from + planes[0].normal * Gap(planes[0], from);
  if (planes.size() == 2) return MeetInLine(planes[0], planes[1], from);
  return MeetInPoint(planes[0], planes[1], planes[2], from);
}

}  // namespace kernel

// Crossing triangles: Guigue and Devillers, "Fast and robust triangle-triangle overlap test using
// orientation predicates", J. Graphics Tools 8 (2003), with strict comparisons throughout, so that
// contact of sides and corners does not count.
#include "kernel/heal/ExactPredicates.h"

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <algorithm>
#include <utility>

namespace kernel {
namespace {

using Exact = CGAL::Exact_predicates_inexact_constructions_kernel;

int Side(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
  const auto point = [](const Vec3& v) { return Exact::Point_3(v.x, v.y, v.z); };
  return CGAL::orientation(point(a), point(b), point(c), point(d));
}

int Side(const Vec3& a, const Vec3& b, const Vec3& c, int dropped) {
  const auto point = [dropped](const Vec3& v) {
    return Exact::Point_2(v[(dropped + 1) % 3], v[(dropped + 2) % 3]);
  };
  return CGAL::orientation(point(a), point(b), point(c));
}

using Signs = std::array<int, 3>;

Signs SidesOf(const Triangle& plane, const Triangle& points) {
  Signs signs;
  for (std::size_t i = 0; i < 3; ++i) signs[i] = Side(plane[0], plane[1], plane[2], points[i]);
  return signs;
}

bool LieOnOneSide(const Signs& s) {
  return (s[0] >= 0 && s[1] >= 0 && s[2] >= 0) || (s[0] <= 0 && s[1] <= 0 && s[2] <= 0);
}

// A triangle and on which sides of the other one's plane its corners lie.
struct Sided {
  Triangle corners;
  Signs signs;

  void TurnOver() {
    std::swap(corners[1], corners[2]);
    std::swap(signs[1], signs[2]);
  }
};

// Turns `t` until its first corner is alone on its side of the other triangle's plane. When that
// is the lower side, the other triangle is turned over to make it the upper one.
void PutLoneCornerFirst(Sided& t, Sided& other) {
  std::ptrdiff_t lone = 0;
  bool above = false;
  for (std::size_t i = 0; i < 3 && !above; ++i) {
    const int next = t.signs[(i + 1) % 3], last = t.signs[(i + 2) % 3];
    above = t.signs[i] > 0 && next <= 0 && last <= 0;
    if (above || (t.signs[i] < 0 && next >= 0 && last >= 0)) lone = static_cast<std::ptrdiff_t>(i);
  }
  std::rotate(t.corners.begin(), t.corners.begin() + lone, t.corners.end());
  std::rotate(t.signs.begin(), t.signs.begin() + lone, t.signs.end());
  if (!above) other.TurnOver();
}

bool PassThroughEachOther(Sided a, Sided b) {
  PutLoneCornerFirst(a, b);
  PutLoneCornerFirst(b, a);
  const Triangle &t = a.corners, &u = b.corners;
  return Side(t[0], t[1], u[0], u[1]) < 0 && Side(t[0], t[2], u[2], u[0]) < 0;
}

// A coordinate to leave out so that the triangle keeps an area; 3 when it has none.
int DroppedAxis(const Triangle& t) {
  const Vec3 normal = Cross(t[1] - t[0], t[2] - t[0]);
  std::array<int, 3> axes = {0, 1, 2};
  std::sort(axes.begin(), axes.end(),
            [&](int i, int j) { return std::abs(normal[i]) > std::abs(normal[j]); });
  for (const int axis : axes) {
    if (Side(t[0], t[1], t[2], axis) != 0) return axis;
  }
  return 3;
}

// Whether a side of `t`, counter-clockwise, has all of `other` on its right or on itself.
bool IsBeside(const Triangle& t, const Triangle& other, int dropped) {
  for (std::size_t i = 0; i < 3; ++i) {
    const Vec3 &from = t[i], &to = t[(i + 1) % 3];
    if (std::all_of(other.begin(), other.end(),
                    [&](const Vec3& p) { return Side(from, to, p, dropped) <= 0; })) {
      return true;
    }
  }
  return false;
}

Overlap OverlapInPlane(Triangle a, Triangle b) {
  const int dropped = DroppedAxis(a);
  if (dropped == 3) return Overlap::kNone;
  const int aTurn = Side(a[0], a[1], a[2], dropped);
  const int bTurn = Side(b[0], b[1], b[2], dropped);
  if (bTurn == 0) return Overlap::kNone;
  if (aTurn < 0) std::swap(a[1], a[2]);
  if (bTurn < 0) std::swap(b[1], b[2]);
  if (IsBeside(a, b, dropped) || IsBeside(b, a, dropped)) return Overlap::kNone;
  return aTurn == bTurn ? Overlap::kSameFacing : Overlap::kFacingAway;
}

// A side from a to b, seen from above: which side of it the point lies on, the point shifted by an
// infinitesimal step along x and a smaller one along y.
int ShiftedSide(const Vec3& a, const Vec3& b, const Vec3& point) {
  const int side = Side(a, b, point, 2);
  if (side != 0) return side;
  if (a.y != b.y) return a.y > b.y ? 1 : -1;
  return a.x < b.x ? 1 : a.x > b.x ? -1 : 0;
}

}  // namespace

Overlap OverlapOf(const Triangle& a, const Triangle& b) {
  const Signs bSigns = SidesOf(a, b);
  const bool inPlane = bSigns == Signs{0, 0, 0};
  if (!inPlane && LieOnOneSide(bSigns)) return Overlap::kNone;
  if (inPlane) return OverlapInPlane(a, b);
  const Signs aSigns = SidesOf(b, a);
  if (LieOnOneSide(aSigns)) return Overlap::kNone;
  return PassThroughEachOther({a, aSigns}, {b, bSigns}) ? Overlap::kCrossing : Overlap::kNone;
}

bool IsAbove(const Triangle& t, const Vec3& point) {
  const int first = ShiftedSide(t[0], t[1], point);
  if (first == 0 || ShiftedSide(t[1], t[2], point) != first ||
      ShiftedSide(t[2], t[0], point) != first) {
    return false;
  }
  // Seen from above counter-clockwise, the triangle has points below it on the negative side.
  return Side(t[0], t[1], t[2], point) * first < 0;
}

}  // namespace kernel

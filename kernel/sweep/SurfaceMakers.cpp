#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {
namespace {

// A turn of more than this (as a cosine) within one cell means another piece of the cutter.
constexpr double kSamePiece = 0.85;

}  // namespace

TangentPlane SurfaceMakers::TangentTowards(Generator maker, const TangentPlane& known,
                                           const Vec3& target) const {
  if (!maker.IsMove()) return known;
  const Vec3 foot = target - known.normal * Dot(known.normal, target - known.point);
  const TangentPlane nearest = TangentNearest(maker, foot);
  return Dot(nearest.normal, known.normal) > kSamePiece ? nearest : known;
}

}  // namespace kernel

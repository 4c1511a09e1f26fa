#include "kernel/sweep/LocalSolid.h"

namespace kernel {

NearestMaker LocalSolid::From(Generator maker, const Vec3& point) const {
  const TangentPlane plane = Makers().TangentNearest(maker, point);
  const double above = Dot(plane.normal, point - plane.point);
  return {maker.IsMove() ? -above : above, maker, plane};
}

}  // namespace kernel

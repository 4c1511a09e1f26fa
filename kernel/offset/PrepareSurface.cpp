#include "kernel/offset/PrepareSurface.h"

#include <cmath>

#include "kernel/common/FatalError.h"
#include "kernel/sweep/PrepareStock.h"
#include "kernel/sweep/WeldVertices.h"

namespace kernel {

PreparedSurface PrepareSurface(const StockMesh& given) {
  CheckFinite(given, "surface");
  PreparedSurface surface{WeldVertices(given), {}, false, false};
  for (const Vec3& vertex : surface.mesh.vertices) surface.box.Include(vertex);
  if (!std::isfinite(surface.box.Diagonal())) {
    throw FatalError("the surface is too large to measure");
  }
  surface.isClosed = CountOpenEdges(surface.mesh) == 0;
  surface.turned = surface.isClosed && SixfoldVolume(surface.mesh) < 0;
  if (surface.turned) TurnOver(surface.mesh);
  return surface;
}

}  // namespace kernel

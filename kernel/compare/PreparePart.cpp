#include "kernel/compare/PreparePart.h"

#include <cmath>

#include "kernel/common/FatalError.h"
#include "kernel/sweep/PrepareStock.h"
#include "kernel/sweep/WeldVertices.h"

namespace kernel {

PreparedPart PreparePart(const StockMesh& given) {
  CheckFinite(given, "part");
  PreparedPart part{WeldVertices(given), {}, false};
  for (const Vec3& vertex : part.mesh.vertices) part.box.Include(vertex);
  if (!std::isfinite(part.box.Diagonal())) throw FatalError("the part is too large to measure");
  part.turned = CountOpenEdges(part.mesh) == 0 && SixfoldVolume(part.mesh) < 0;
  if (part.turned) TurnOver(part.mesh);
  part.mesh = WithOwnVertices(part.mesh);
  return part;
}

}  // namespace kernel

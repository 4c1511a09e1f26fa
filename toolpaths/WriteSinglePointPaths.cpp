#include "toolpaths/WriteSinglePointPaths.h"

#include <cstdint>

#include "blocks/BlockWriter.h"
#include "platform/QZCore.h"
#include "toolpaths/InterchangeHead.h"
#include "toolpaths/TrackedFile.h"

namespace {

constexpr double kMatrix[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr double kOrigin[3] = {0, 0, 0};

bool WriteTool(bool metric, BlockWriter* out) {
  // Corner radius, flat radius, upper and lower taper angle, taper height, upper bevel radius.
  const double tool[6] = {0, metric ? 25.4 : 1.0, 0, 90, 0, 0};
  return out->Write(std::int32_t{1}) && out->Write(tool, sizeof tool);
}

bool WritePath(bool metric, double compressTolerance, const double* point, BlockWriter* out) {
  constexpr std::size_t kPointSize = 3 * sizeof(double);
  const double tolerance = metric ? 0.025 : 0.001;
  return out->Write(std::int32_t{1}) && out->Write(std::int32_t{0}) &&  // 3-axis, colour
         out->Write(tolerance) && out->Write(tolerance) && out->Write(compressTolerance) &&
         out->Write(kMatrix, sizeof kMatrix) && out->Write(kOrigin, sizeof kOrigin) &&
         WriteTool(metric, out) && out->Write(std::uint32_t{1}) &&
         out->Write(std::uint32_t{2}) &&  // cuts, positions
         out->Write(point, kPointSize) && out->Write(point, kPointSize);
}

}  // namespace

bool WriteSinglePointPaths(CString workingDirectory, double compressTolerance,
                           const double* point) {
  const CString path = workingDirectory + "BinaryPaths.tmp";
  TrackedFile output(workingDirectory.GetString(), path.GetString(), "wb");
  if (!output.IsOpen()) return false;
  BlockWriter out(output.Stream());
  return WriteInterchangeHead(&out) && out.Write(std::uint32_t{1}) &&
         WritePath(IsMetric(), compressTolerance, point, &out) && out.Flush();
}

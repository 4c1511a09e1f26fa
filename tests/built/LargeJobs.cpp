#include "built/LargeJobs.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "support/JobFiles.h"
#include "support/TempDirectory.h"
#include "support/geometry/ScannedBall.h"
#include "support/geometry/SweepInputs.h"

namespace {

using Files = std::map<std::string, std::string>;

support::Surface SurfaceOf(const formats::Mesh& mesh) {
  support::Surface surface;
  surface.vertices.assign(mesh.vertices.begin(), mesh.vertices.end());
  for (const formats::Facet& facet : mesh.facets) {
    const auto& [a, b, c] = facet.vertices;
    surface.facets.push_back({{a + 1, b + 1, c + 1}, facet.colour});
  }
  return surface;
}

support::Surface Ball(std::size_t rows, double radius, double noise) {
  support::Surface ball = SurfaceOf(support::ScannedBall(rows, radius, noise, {50, 50, 50}));
  for (auto& facet : ball.facets) facet.colour = 7;
  return ball;
}

Files OneBall(std::size_t rows, double noise) {
  return {{"in.iff", support::BinarySurfaceBytes(Ball(rows, 40, noise))}};
}

Files Cutting() {
  const support::SweepInput input = support::WavedSurface(4, 4, 0);
  support::Path path;
  path.sweepToler = path.pathToler = 0.2;
  path.tool = support::ConvexBlock{{5, 0, 0, 90, 0, 0}};
  path.positions = input.path.cuts.front().coordinates;
  return {{"StockModelInput.tmp", support::BinarySurfaceBytes(SurfaceOf(input.stock))},
          {"TmpPathInfo0.tmp", support::PathInfoBytes(path)}};
}

Files Comparison() {
  return {{"PartFileToCompare.iff", support::BinarySurfaceBytes(Ball(70, 40, 0.1))},
          {"StockModelOutput.tmp", support::BinarySurfaceBytes(Ball(50, 40.3, 0))},
          {"TmpCompareInfo.tmp", support::CompareInfoBytes({7, 3, {3, 9, 12}, {-0.5, 0.1, 0.5}})}};
}

// Without every 97th facet.
Files Holed() {
  support::Surface ball = Ball(70, 40, 0);
  support::Surface holed{ball.vertices, {}};
  for (std::size_t i = 0; i < ball.facets.size(); ++i) {
    if (i % 97 != 0) holed.facets.push_back(ball.facets[i]);
  }
  return {{"in.iff", support::BinarySurfaceBytes(holed)}};
}

Files InputsOf(const std::string& operation) {
  if (operation == "qztutlSweepMultipleToolpathsFromStock") return Cutting();
  if (operation == "qztutlSweepPartStockCompare") return Comparison();
  if (operation == "qztutlStockModelCompress") return OneBall(40, 0.02);
  if (operation == "qztutlFilterStockByColor") return OneBall(200, 0);
  if (operation == "qztutl_heal") return Holed();
  if (operation == "qztutl_silbndy") return OneBall(120, 0.02);
  if (operation == "qztutlSpinSilBndy") return OneBall(35, 0.02);
  return {{"in.iff", support::BinarySurfaceBytes(Ball(3, 6, 0))}};
}

}  // namespace

std::vector<BuiltJob> LargeJobs() {
  std::vector<BuiltJob> jobs = BuiltJobs();
  const char* given = std::getenv("QZ_LONG_JOBS");
  for (BuiltJob& job : jobs) {
    const auto own = std::filesystem::path(given == nullptr ? "" : given) / job.name;
    job.inputs = std::filesystem::exists(own) ? support::FilesIn(own) : InputsOf(job.name);
  }
  return jobs;
}

#include "built/BuiltJobs.h"

#include <algorithm>
#include <ostream>

#include "support/JobFiles.h"

namespace {

using support::BinarySurfaceBytes;
using support::Cube;

constexpr const char* kSurface = "binary surface";
using Files = std::map<std::string, std::string>;

support::Surface MovedCube(double edge, double x, double y) {
  support::Surface cube = Cube(edge, 7);
  for (auto& vertex : cube.vertices) {
    vertex[0] += x;
    vertex[1] += y;
  }
  return cube;
}

// Two cubes that cross, of which one lacks a facet.
support::Surface Damaged() {
  support::Surface surface = Cube(4, 7);
  const support::Surface other = MovedCube(4, 2.5, 1.25);
  const auto first = static_cast<std::int32_t>(surface.vertices.size());
  surface.vertices.insert(surface.vertices.end(), other.vertices.begin(), other.vertices.end());
  for (support::Surface::Facet facet : other.facets) {
    for (auto& number : facet.numbers) number += first;
    surface.facets.push_back(facet);
  }
  surface.facets.erase(surface.facets.begin());
  return surface;
}

support::Path Cut() {
  support::Path path;
  path.sweepToler = 0.5;
  path.pathToler = 0.5;
  path.compressToler = 0.5;
  path.tool = support::ConvexBlock{{0, 2, 0, 90, 10, 0}};
  path.positions = {-3, 5, 7, 13, 5, 7};
  return path;
}

int InJob(const host::AddIn& addIn, const char* name, const std::string& place,
          HostProgress* host) {
  bool succeeded = true;
  addIn.Export<void(CString, HostProgress*, bool*)>(name)(place.c_str(), host, &succeeded);
  return succeeded ? 1 : 0;
}

int Compress(const host::AddIn& addIn, const std::string& place, HostProgress* host) {
  bool succeeded = true;
  using Operation = void(CString, CString, CString, HostProgress*, double, bool*);
  addIn.Export<Operation>("qztutlStockModelCompress")(
      place.c_str(), "in.iff", (place + "out.iff").c_str(), host, 0.1, &succeeded);
  return succeeded ? 1 : 0;
}

int Filter(const host::AddIn& addIn, const std::string& place, HostProgress*) {
  bool succeeded = true;
  std::string input = place + "in.iff";
  std::string output = place + "out.iff";
  unsigned char colours[] = {7};
  using Operation = void(char*, char*, unsigned short, unsigned char*, bool*);
  addIn.Export<Operation>("qztutlFilterStockByColor")(input.data(), output.data(), 1, colours,
                                                      &succeeded);
  return succeeded ? 1 : 0;
}

int Heal(const host::AddIn& addIn, const std::string& place, HostProgress*) {
  bool succeeded = true;
  std::string input = place + "in.iff";
  std::string output = place + "out.iff";
  addIn.Export<void(double, char*, char*, bool*)>("qztutl_heal")(0.01, input.data(), output.data(),
                                                                 &succeeded);
  return succeeded ? 1 : 0;
}

// The boxes lie near the origin, so that nothing is moved.
struct Box {
  double min[3] = {0, 0, 0};
  double max[3] = {10, 10, 10};
  unsigned char result = 77;
};

int Silhouette(const host::AddIn& addIn, const std::string& place, HostProgress*) {
  Box box;
  std::string input = place + "in.iff";
  std::string output = place + "out.iff";
  using Operation = void(char*, char*, double, double*, double*, unsigned char*);
  addIn.Export<Operation>("qztutl_silbndy")(input.data(), output.data(), 0.1, box.min, box.max,
                                            &box.result);
  return box.result;
}

int Spin(const host::AddIn& addIn, const std::string& place, HostProgress*) {
  Box box;
  using Operation = void(const char*, int, const char*, double, double*, double*, unsigned char*);
  addIn.Export<Operation>("qztutlSpinSilBndy")((place + "in.iff").c_str(), 1,
                                               (place + "out.iff").c_str(), 0.1, box.min, box.max,
                                               &box.result);
  return box.result;
}

int Offset(const host::AddIn& addIn, const std::string& place, HostProgress*) {
  Box box;
  using Operation =
      void(const char*, const char*, double, double, double*, double*, unsigned char*);
  addIn.Export<Operation>("qztutlSphericalOffsetTris")((place + "in.iff").c_str(),
                                                       (place + "out.iff").c_str(), 1.0, 30.0,
                                                       box.min, box.max, &box.result);
  return box.result;
}

}  // namespace

void PrintTo(const BuiltJob& job, std::ostream* out) { *out << job.name; }

std::vector<BuiltJob> BuiltJobs() {
  const std::string cube = BinarySurfaceBytes(Cube(10, 7));
  const Files one{{"in.iff", cube}};
  const std::set<std::string> paths{"BinaryPaths.tmp", "BinaryPaths.txt"};
  return {
      {"qztutlSweepMultipleToolpathsFromStock",
       {{"StockModelInput.tmp", cube}, {"TmpPathInfo0.tmp", support::PathInfoBytes(Cut())}},
       "StockModelOutput.tmp",
       kSurface,
       [](const host::AddIn& addIn, const std::string& place, HostProgress* host) {
         return InJob(addIn, "qztutlSweepMultipleToolpathsFromStock", place, host);
       },
       0,
       BuiltJob::Loss::kNone,
       paths,
       {"TmpSaveBinaryPaths.tmp", "TmpSaveBinaryPaths.txt", "TmpSaveInputStock.iff"}},
      {"qztutlSweepPartStockCompare",
       {{"PartFileToCompare.iff", BinarySurfaceBytes(MovedCube(8, 1.5, 1))},
        {"StockModelOutput.tmp", cube},
        {"TmpCompareInfo.tmp", support::CompareInfoBytes({7, 2, {3, 9}, {-20.0, 20.0}})}},
       "CompareResults.iff",
       kSurface,
       [](const host::AddIn& addIn, const std::string& place, HostProgress* host) {
         return InJob(addIn, "qztutlSweepPartStockCompare", place, host);
       },
       1,
       BuiltJob::Loss::kNone,
       {},
       {"TmpSaveCompareInfo.txt", "TmpSaveComparePart.iff", "TmpSaveCompareResults.iff",
        "TmpSaveCompareStock.iff"}},
      {"qztutlStockModelCompress", one, "out.iff", kSurface, Compress, 0, BuiltJob::Loss::kNone,
       paths},
      {"qztutlFilterStockByColor", one, "out.iff", kSurface, Filter, 1, BuiltJob::Loss::kFacets},
      {"qztutl_heal",
       {{"in.iff", BinarySurfaceBytes(Damaged())}},
       "out.iff",
       "",
       Heal,
       0,
       BuiltJob::Loss::kLibraryBlocks},
      {"qztutl_silbndy", one, "out.iff", "", Silhouette, 0},
      {"qztutlSpinSilBndy",
       {{"in.iff", BinarySurfaceBytes(MovedCube(4, 1, 2))}},
       "out.iff",
       "binary tree_curves",
       Spin,
       -1,
       BuiltJob::Loss::kEnd},
      {"qztutlSphericalOffsetTris", one, "out.iff", kSurface, Offset, -1}};
}

BuiltJob JobOf(const std::string& name) {
  const std::vector<BuiltJob> jobs = BuiltJobs();
  return *std::find_if(jobs.begin(), jobs.end(),
                       [&](const BuiltJob& job) { return job.name == name; });
}

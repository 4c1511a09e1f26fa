// kernel_offset_bench: a body with bumps grown and shrunk by 2 at 20 and at 10 degrees, five times
// each, best time. Then the facets of the results, how far they and the exact surfaces are apart at
// the most (many points of both are looked at), and the most memory held.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <string>

#include "BestOfFive.h"
#include "MeshChannel.h"
#include "OutlineShapes.h"
#include "callbacks/UIDialog.h"
#include "platform/IFSphoffset.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/OffsetDeviation.h"

namespace {

class Complaints final : public UIDialog {
 public:
  void ErrorMessage(const char* message, bool fatal) override {
    std::printf("%s: %s\n", fatal ? "error" : "warning", message);
    failed = failed || fatal;
  }
  bool failed = false;
};

struct Job {
  const char* name;
  double distance, degrees;
};
constexpr std::size_t kLookedAt = 5;  // every so many facets
constexpr Job kJobs[] = {{"Grown by 2, 20 degrees", 2, 20},
                         {"Shrunk by 2, 20 degrees", -2, 20},
                         {"Grown by 2, 10 degrees", 2, 10},
                         {"Shrunk by 2, 10 degrees", -2, 10}};

bool Offset(const formats::Mesh& mesh, const Job& job, MeshChannel& output) {
  Complaints complaints;
  IFSphoffset offset(&complaints);
  Play(mesh, *offset.OpenInputChannel());
  offset.Run(job.degrees, job.distance, &output);
  return !complaints.failed;
}

void PrintResult(const formats::Mesh& mesh, const Job& job) {
  MeshChannel output;
  if (!Offset(mesh, job, output)) return;
  const double limit =
      std::abs(job.distance) * (1 - std::cos(job.degrees * std::numbers::pi / 360));
  const support::OffsetDeviation deviation =
      support::DeviationOfOffset(mesh, job.distance, output.mesh, {kLookedAt, limit});
  std::printf("%s: %zu facets, allowed %.5f\n", job.name, output.mesh.facets.size(), limit);
  std::printf("  result off by %.5f, beyond in %zu of %zu points\n", deviation.ofResult,
              deviation.resultBeyond.size(), deviation.resultPoints);
  std::printf("  exact surface off by %.5f, beyond in %zu of %zu points\n", deviation.ofExact,
              deviation.exactBeyond.size(), deviation.exactPoints);
  for (const std::string& fault :
       {support::ClosedFault(output.mesh), support::ZeroAreaFault(output.mesh)}) {
    if (!fault.empty()) std::printf("  %s\n", fault.c_str());
  }
}

double PeakOf(const formats::Mesh& mesh, const Job& job) {
  return PeakMebibytes([&] {
    MeshChannel output;
    return Offset(mesh, job, output);
  });
}

}  // namespace

int main(int argc, char** argv) {
  const formats::Mesh mesh = Blob(224);
  // Of the job that holds most; before this process has grown.
  const double peak = PeakOf(mesh, kJobs[2]);
  BestOfFive bench;
  for (const Job& job : kJobs) {
    bench.Add(job.name, [&] {
      MeshChannel output;
      return Offset(mesh, job, output);
    });
  }
  if (!bench.Run(argc, argv)) return EXIT_FAILURE;
  for (const Job& job : kJobs) {
    const double processor = bench.ProcessorTime(job.name);
    if (processor == 0) continue;  // left out by the arguments
    std::printf("%s: processor time %.2f s\n", job.name, processor);
    PrintResult(mesh, job);
  }
  std::printf("%s holds %.0f MiB at most\n", kJobs[2].name, peak);
  return EXIT_SUCCESS;
}

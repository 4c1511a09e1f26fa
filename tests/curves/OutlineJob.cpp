#include "OutlineJob.h"

#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"
#include "curves/RunSilhouette.h"
#include "curves/RunSphericalOffset.h"
#include "curves/RunSpinSilhouette.h"
#include "curves/SilhouetteBoundary.h"
#include "curves/SphericalOffset.h"
#include "curves/SpinSilhouetteBoundary.h"
#include "platform/QZCore.h"

using support::CurveFileBytes;

namespace {

const std::vector<std::vector<std::pair<std::int32_t, std::int32_t>>> kSquareCurve = {
    {{4, 1}, {1, 2}, {2, 3}, {3, 4}}};

}  // namespace

OutlineJob::OutlineJob() : m_tolerance(tol) {
  tol = 0.1;
  ResetAbortState();
  CurrentProgress() = {};
  host.metric = false;
  host.temporaryDirectory = WorkDir().GetString();
  kernel.outline = support::Square(8);
  kernel.result = support::OneFacet(3, 9);
  // A silhouette's kernel writes its file itself.
  kernel.At("silhouette.Run", [this](UIDialog&) {
    support::WriteWholeFile(InJob("out.tmp"), Answer(Operation::kSilhouette));
  });
  PutInput(support::OneFacet(4, 7));
}

OutlineJob::~OutlineJob() { tol = m_tolerance; }

unsigned char OutlineJob::Run(Operation operation) {
  switch (operation) {
    case Operation::kSilhouette:
      return RunSilhouette(input.data(), output.data(), distance);
    case Operation::kSpin:
      return RunSpinSilhouette(input.c_str(), 0, output.c_str(), distance);
    case Operation::kSpinTree:
      return RunSpinSilhouette(input.c_str(), 1, output.c_str(), distance);
    case Operation::kOffset:
      return RunSphericalOffset(input.c_str(), output.c_str(), distance, unscaledValue);
  }
  return 99;
}

void OutlineJob::Call(Operation operation) {
  double* low = boxMin.data();
  double* high = boxMax.data();
  switch (operation) {
    case Operation::kSilhouette:
      return SilhouetteBoundary(input.data(), output.data(), distance, low, high, &result);
    case Operation::kSpin:
      return SpinSilhouetteBoundary(input.c_str(), 0, output.c_str(), distance, low, high, &result);
    case Operation::kSpinTree:
      return SpinSilhouetteBoundary(input.c_str(), 1, output.c_str(), distance, low, high, &result);
    case Operation::kOffset:
      return SphericalOffset(input.c_str(), output.c_str(), distance, unscaledValue, low, high,
                             &result);
  }
}

void OutlineJob::PutInput(const support::Surface& surface) {
  support::WriteWholeFile(InJob("in.iff"), support::BinarySurfaceBytes(surface));
}

std::string OutlineJob::Answer(Operation operation) const {
  if (operation == Operation::kOffset) return support::BinarySurfaceBytes(kernel.result);
  const int mode = operation == Operation::kSpin ? 0 : 1;
  return CurveFileBytes({mode, kernel.outline.points, 4, kSquareCurve});
}

std::string OutlineJob::Unfinished(Operation operation) const {
  if (operation == Operation::kOffset) return "binary surface";
  return support::CurveFileHeader(operation == Operation::kSpin ? 0 : 1);
}

std::string OutlineJob::RunCall(Operation operation) {
  if (operation == Operation::kSilhouette) return "silhouette.Run";
  return operation == Operation::kOffset ? "sphoffset.Run" : "spinsil.Run";
}

Points Moved(Points points, const std::array<double, 3>& c, double s) {
  for (auto& point : points) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      point[axis] -= c[axis];
      point[axis] *= s;
    }
  }
  return points;
}

Points MovedBack(Points points, const std::array<double, 3>& c, double s) {
  for (auto& point : points) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      point[axis] /= s;
      point[axis] += c[axis];
    }
  }
  return points;
}

std::string NameOf(Operation operation) {
  switch (operation) {
    case Operation::kSilhouette:
      return "Silhouette";
    case Operation::kSpin:
      return "Spin";
    case Operation::kSpinTree:
      return "SpinTree";
    case Operation::kOffset:
      return "Offset";
  }
  return "";
}

#include "support/SweepJobTest.h"

namespace support {
namespace {

constexpr const char* kStale = "what an earlier job left";

}  // namespace

SweepJobTest::SweepJobTest() {
  WritePath(0, Path());
  WriteStock(OneFacet(1, 5));
  kernel.result = OneFacet(2, 9);
}

void SweepJobTest::WritePath(int number, const Path& path) {
  WriteWholeFile(InJob("TmpPathInfo" + std::to_string(number) + ".tmp"), PathInfoBytes(path));
}

void SweepJobTest::WriteStock(const Surface& surface) {
  WriteWholeFile(InJob("StockModelInput.tmp"), BinarySurfaceBytes(surface));
}

void SweepJobTest::WriteStaleOutput() { WriteWholeFile(InJob("StockModelOutput.tmp"), kStale); }

bool SweepJobTest::HasStaleOutput() const {
  return JobHas("StockModelOutput.tmp") && ReadWholeFile(InJob("StockModelOutput.tmp")) == kStale;
}

}  // namespace support

#include "support/CompressJobTest.h"

namespace support {

CompressJobTest::CompressJobTest() {
  WriteInput(InputBytes());
  WriteWholeFile(InJob("out.iff"), "what an earlier job left");
  kernel.result = OneFacet(2, 9);
}

void CompressJobTest::WriteInput(const std::string& bytes) {
  WriteWholeFile(InJob("in.iff"), bytes);
}

std::string CompressJobTest::InputBytes() const {
  return BinarySurfaceBytes({{{1, 2, 3}, {4, 5, 6}, {7, 8, 5.5}}, {{{1, 2, 3}, 5}}});
}

std::string CompressJobTest::PathBytes(double tolerance, const std::array<double, 3>& point) {
  Path path;
  path.colour = 0;
  path.sweepToler = 0.025;
  path.pathToler = 0.025;
  path.compressToler = tolerance;
  path.tool = ConvexBlock{{0, 25.4, 0, 90, 0, 0}};
  path.positions = {point[0], point[1], point[2], point[0], point[1], point[2]};
  return InterchangeBytes({path});
}

CompressJobTest::Files CompressJobTest::FilesInJob() const {
  Files files = FilesIn(InJob(""));
  files.erase("BinaryPaths.txt");
  return files;
}

CompressJobTest::Files CompressJobTest::InputAnd(const std::string& path,
                                                 const std::string& output) const {
  Files files{{"in.iff", ReadWholeFile(InJob("in.iff"))}};
  if (!path.empty()) files["BinaryPaths.tmp"] = path;
  if (!output.empty()) files["out.iff"] = output;
  return files;
}

}  // namespace support

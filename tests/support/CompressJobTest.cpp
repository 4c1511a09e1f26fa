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

std::string CompressJobTest::JobPathText() {
  return TextFileBytes(
      "binary toolpaths //16 chars delimiter is not written\n"
      "0 //file format version\n"
      "1 //number of paths (0 or more)\n"
      "1 //pathType 1=3-axis, 2=5-axis\n"
      "0 //color\n"
      "        0.0250000000 //sweepToler (aka toolToler)\n"
      "        0.0250000000 //pathToler\n"
      "        0.2500000000 //compressToler\n"
      "        1.0000000000 //matrix[0,0]\n"
      "        0.0000000000 //matrix[0,1]\n"
      "        0.0000000000 //matrix[0,2]\n"
      "        0.0000000000 //matrix[1,0]\n"
      "        1.0000000000 //matrix[1,1]\n"
      "        0.0000000000 //matrix[1,2]\n"
      "        0.0000000000 //matrix[2,0]\n"
      "        0.0000000000 //matrix[2,1]\n"
      "        1.0000000000 //matrix[2,2]\n"
      "        0.0000000000 //origin[0]\n"
      "        0.0000000000 //origin[1]\n"
      "        0.0000000000 //origin[2]\n"
      "1 //tool type 1=standard convex, 2=standard undercut, 3=standard custom\n"
      "        0.0000000000 //corner radius\n"
      "       25.4000000000 //flat radius\n"
      "        0.0000000000 //upper taper angle\n"
      "       90.0000000000 //lower taper angle\n"
      "        0.0000000000 //taper height\n"
      "        0.0000000000 //upper bevel radius\n"
      "1 //number of Cuts (1 or more)\n"
      "2 //number of Tool Positions (1 or more)\n"
      "        4.0000000000         5.0000000000         8.5000000000 // 3axis tip position\n"
      "        4.0000000000         5.0000000000         8.5000000000 // 3axis tip position\n");
}

CompressJobTest::Files CompressJobTest::InputFile() const {
  return {{"in.iff", ReadWholeFile(InJob("in.iff"))}};
}

CompressJobTest::Files CompressJobTest::InputAndPath() const {
  Files files = InputFile();
  files["BinaryPaths.tmp"] = JobPathBytes();
  files["BinaryPaths.txt"] = JobPathText();
  return files;
}

CompressJobTest::Files CompressJobTest::InputPathAnd(const std::string& output) const {
  Files files = InputAndPath();
  files["out.iff"] = output;
  return files;
}

}  // namespace support

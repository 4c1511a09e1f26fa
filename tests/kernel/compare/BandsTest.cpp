// Which facets a comparison splits, and the colours it gives.

#include <gtest/gtest.h>

#include "CompareRun.h"
#include "support/geometry/MeshChecks.h"

namespace compare_test {
namespace {

using support::Box;

formats::Mesh Block() { return Box({0, 0, 0}, {100, 80, 30}, 5); }

// The block with a square pit in the middle of its upper face.
formats::Mesh PittedBlock(double width, double depth) {
  formats::Mesh block = Block();
  const double x = 50 - width / 2, y = 40 - width / 2, z = 30 - depth;
  for (const double height : {30.0, z}) {
    block.vertices.push_back({x, y, height});
    block.vertices.push_back({x + width, y, height});
    block.vertices.push_back({x + width, y + width, height});
    block.vertices.push_back({x, y + width, height});
  }
  // The box's upper corners in the same order: 4, 5, 7, 6; the pit's rim 8 to 11, its floor 12 on.
  std::erase_if(block.facets, [](const formats::Facet& facet) {
    return facet.vertices == std::array<std::int32_t, 3>{4, 5, 7} ||
           facet.vertices == std::array<std::int32_t, 3>{4, 7, 6};
  });
  const std::int32_t outer[] = {4, 5, 7, 6};
  for (std::int32_t i = 0; i < 4; ++i) {
    const std::int32_t next = (i + 1) % 4;
    const std::int32_t a = outer[i], b = outer[next], c = 8 + next, d = 8 + i;
    block.facets.push_back({{a, b, c}, 5});
    block.facets.push_back({{a, c, d}, 5});
    block.facets.push_back({{d, c, c + 4}, 5});
    block.facets.push_back({{d, c + 4, d + 4}, 5});
  }
  block.facets.push_back({{12, 13, 14}, 5});
  block.facets.push_back({{12, 14, 15}, 5});
  return block;
}

TEST(CompareBands, PartLikeTheStockComesOutUnsplit) {
  ExpectUnsplit(RunCompare(Block(), Block(), kThree), Block(), 2);
}

TEST(CompareBands, PitInTheMiddleOfAFaceOfTwoFacetsIsFound) {
  ASSERT_EQ(support::ClosedFault(PittedBlock(3, 5)), "");
  const formats::Mesh stock = PittedBlock(3, 5);
  const SweepResult run = RunCompare(Block(), stock, kThree);
  ExpectSound(run);
  ExpectColours(run, Block(), stock, kThree);
  // Further than 0.05 from the rim.
  EXPECT_NEAR(AreaOf(run.mesh, 1), 2.9 * 2.9, 0.3);
  EXPECT_EQ(AreaOf(run.mesh, 3), 0);
}

}  // namespace
}  // namespace compare_test

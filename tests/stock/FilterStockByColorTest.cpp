#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FilterTest.h"
#include "support/FileBuilder.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;

using Facets = std::vector<support::Surface::Facet>;

class FilterStockByColorTest : public FilterTest {
 protected:
  // The output's bytes: the used vertices of the four coloured facets, and these.
  static std::string Kept(const Facets& facets) {
    support::Surface kept = ItsUsedVertices();
    kept.facets = facets;
    return support::BinarySurfaceBytes(kept);
  }

  support::TestHost host;
};

TEST_F(FilterStockByColorTest, KeepsTheFacetsOfAColourAndTheVerticesOfAll) {
  EXPECT_TRUE(Filter(FourColouredFacets(), {9}));
  EXPECT_EQ(OutputBytes(), Kept({{{1, 3, 4}, 9}}));
}

TEST_F(FilterStockByColorTest, KeepsTheOrderOfTheFileWhateverTheOrderOfTheList) {
  EXPECT_TRUE(Filter(FourColouredFacets(), {9, 7}));
  EXPECT_EQ(OutputBytes(), Kept({{{1, 2, 3}, 7}, {{1, 3, 4}, 9}, {{1, 4, 2}, 7}}));
}

TEST_F(FilterStockByColorTest, ColourListedTwiceWritesEachOfItsFacetsTwice) {
  EXPECT_TRUE(Filter(FourColouredFacets(), {7, 9, 7}));
  EXPECT_EQ(OutputBytes(),
            Kept({{{1, 2, 3}, 7}, {{1, 2, 3}, 7}, {{1, 3, 4}, 9}, {{1, 4, 2}, 7}, {{1, 4, 2}, 7}}));
}

TEST_F(FilterStockByColorTest, WithoutColoursOnlyTheUsedVerticesAreLeft) {
  EXPECT_TRUE(Filter(FourColouredFacets(), {}));
  EXPECT_EQ(OutputBytes(), Kept({}));
}

TEST_F(FilterStockByColorTest, ColourThatNoFacetHasLeavesOnlyTheUsedVertices) {
  EXPECT_TRUE(Filter(FourColouredFacets(), {8}));
  EXPECT_EQ(OutputBytes(), Kept({}));
}

TEST_F(FilterStockByColorTest, ColoursAbove127AreFound) {
  support::Surface mesh = FourColouredFacets();
  EXPECT_TRUE(Filter(mesh, {200}));
  EXPECT_EQ(OutputBytes(), Kept({{{2, 4, 3}, 200}}));

  mesh.facets[0].colour = 128;
  mesh.facets[1].colour = 255;
  mesh.facets[2].colour = 127;
  EXPECT_TRUE(Filter(mesh, {255, 128}));
  EXPECT_EQ(OutputBytes(), Kept({{{1, 2, 3}, 128}, {{1, 3, 4}, 255}}));
}

TEST_F(FilterStockByColorTest, ColoursThatDifferInTheirSignOnlyAreNotMixedUp) {
  support::Surface mesh = FourColouredFacets();
  mesh.facets[0].colour = 0;
  mesh.facets[1].colour = 56;  // 256 - 200
  mesh.facets[2].colour = 72;  // 200 - 128
  EXPECT_TRUE(Filter(mesh, {128, 200}));
  EXPECT_EQ(OutputBytes(), Kept({{{2, 4, 3}, 200}}));
}

TEST_F(FilterStockByColorTest, CountIsTakenWithItsSign) {
  const support::Surface mesh = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{1, 2, 3}, 7}}};
  support::Surface expected = mesh;
  expected.facets.assign(32767, {{1, 2, 3}, 7});
  EXPECT_TRUE(Filter(mesh, std::vector<unsigned char>(32767, 7)));
  EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(expected));

  expected.facets.clear();
  for (const std::size_t negative : {32768u, 65535u}) {
    EXPECT_TRUE(Filter(mesh, std::vector<unsigned char>(negative, 7)));
    EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(expected)) << negative;
  }
}

TEST_F(FilterStockByColorTest, MoreThan500KeptFacetsComeOutNewestBlockFirst) {
  support::Surface mesh = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}};
  support::Surface expected = mesh;
  // Every other facet is kept; which of them it is shows in where its numbers begin.
  const std::vector<std::array<std::int32_t, 3>> turns = {{1, 2, 3}, {2, 3, 1}, {3, 1, 2}};
  for (std::size_t i = 0; i < 501; ++i) {
    mesh.facets.push_back({turns[i % 3], 7});
    mesh.facets.push_back({{3, 2, 1}, 8});
  }
  expected.facets.push_back({turns[500 % 3], 7});
  for (std::size_t i = 0; i < 500; ++i) expected.facets.push_back({turns[i % 3], 7});
  EXPECT_TRUE(Filter(mesh, {7}));
  EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(expected));
}

TEST_F(FilterStockByColorTest, MoreThan500UsedVerticesComeOutNewestBlockFirst) {
  support::Surface mesh;
  support::Surface expected;
  for (int i = 1; i <= 501; ++i) mesh.vertices.push_back({i * 1.0, 0, 0});
  for (std::int32_t i = 1; i <= 499; ++i) mesh.facets.push_back({{i, i + 1, i + 2}, 8});
  mesh.facets[0].colour = 7;
  mesh.facets[498].colour = 7;
  expected.vertices.push_back({501, 0, 0});
  for (int i = 1; i <= 500; ++i) expected.vertices.push_back({i * 1.0, 0, 0});
  expected.facets = {{{2, 3, 4}, 7}, {{500, 501, 1}, 7}};
  EXPECT_TRUE(Filter(mesh, {7}));
  EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(expected));
}

TEST_F(FilterStockByColorTest, OlderOutputIsReplacedWhole) {
  support::WriteWholeFile(Output(), std::string(5000, 'x'));
  EXPECT_TRUE(Filter(FourColouredFacets(), {9}));
  EXPECT_EQ(OutputBytes(), Kept({{{1, 3, 4}, 9}}));
}

TEST_F(FilterStockByColorTest, AsksTheHostForNothingButTheTwoFilesTheOutputFirst) {
  Watch(host);
  EXPECT_TRUE(Filter(FourColouredFacets(), {9}));
  EXPECT_THAT(
      host.events.Events(),
      ElementsAre("m_fopen SurfaceXferQZ job\\out.iff wb", "m_fopen QZTUTLA2 job\\in.iff rb",
                  "m_fclose SurfaceXferQZ job\\out.iff", "m_fclose QZTUTLA2 job\\in.iff"));
}

}  // namespace

// The colour filter with something going wrong.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "FilterTest.h"
#include "callbacks/UIExceptionQZC.h"
#include "support/FileBuilder.h"
#include "support/NothrowBlocks.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kHeader = "binary surface";

class FilterFailuresTest : public FilterTest {
 protected:
  std::string Counts(std::int32_t vertices, std::int32_t triangles) {
    return support::FileBuilder().Text(kHeader).Int32(vertices).Int32(triangles).Bytes();
  }
};

TEST_F(FilterFailuresTest, MissingInputLeavesTheHeader) {
  support::TestHost host;
  Watch(host);
  support::WriteWholeFile(Output(), "what an earlier filter left");
  EXPECT_FALSE(FilterAgain({7}));
  EXPECT_EQ(OutputBytes(), kHeader);
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen SurfaceXferQZ job\\out.iff wb",
                                                "m_fopen QZTUTLA2 job\\in.iff rb fails",
                                                "m_fclose SurfaceXferQZ job\\out.iff"));
}

TEST_F(FilterFailuresTest, InputThatEndsEarlyLeavesTheHeaderWhereverItEnds) {
  const std::string whole = support::BinarySurfaceBytes(FourColouredFacets());
  for (std::size_t length = 0; length < whole.size(); ++length) {
    support::TestHost host;
    EXPECT_FALSE(Filter(whole.substr(0, length), {7})) << length;
    EXPECT_EQ(OutputBytes(), kHeader) << length;
    EXPECT_THAT(host.OpenStreams(), IsEmpty()) << length;
  }
}

TEST_F(FilterFailuresTest, InputWithoutVerticesOrTrianglesLeavesTheHeader) {
  const std::string body(1000, '\0');
  for (const auto& [vertices, triangles] :
       std::vector<std::pair<int, int>>{{0, 1}, {1, 0}, {-1, 1}, {1, -1}, {0, 0}}) {
    support::TestHost host;
    EXPECT_FALSE(Filter(Counts(vertices, triangles) + body, {7}));
    EXPECT_EQ(OutputBytes(), kHeader);
  }
}

TEST_F(FilterFailuresTest, InputThatNamesAMissingVertexLeavesTheHeader) {
  support::TestHost host;
  support::Surface mesh = FourColouredFacets();
  mesh.facets.back().numbers[2] = 6;
  EXPECT_FALSE(Filter(mesh, {7}));
  EXPECT_EQ(OutputBytes(), kHeader);
}

TEST_F(FilterFailuresTest, InputThatIsTheOutputIsLostBeforeItIsRead) {
  support::TestHost host;
  const std::string name = Spelled("in.iff");
  support::WriteWholeFile(Input(), support::BinarySurfaceBytes(FourColouredFacets()));
  const unsigned char colour = 7;
  EXPECT_FALSE(FilterStockByColor(name.c_str(), name.c_str(), 1, &colour));
  EXPECT_EQ(support::ReadWholeFile(Input()), kHeader);
}

TEST_F(FilterFailuresTest, OutputThatCannotBeCreatedGoesUnnoticed) {
  support::TestHost host;
  Watch(host);
  host.faults.FailCall("m_fopen", 1);
  EXPECT_TRUE(Filter(FourColouredFacets(), {7}));
  EXPECT_FALSE(std::filesystem::exists(Output()));
  EXPECT_THAT(
      host.events.Events(),
      ElementsAre("m_fopen SurfaceXferQZ job\\out.iff wb fails", "m_fopen QZTUTLA2 job\\in.iff rb",
                  "remove job\\out.iff fails", "m_fclose QZTUTLA2 job\\in.iff"));
}

TEST_F(FilterFailuresTest, OutputThatCannotBeWrittenGoesUnnoticedAndIsRemoved) {
  int writes = 0;
  {
    support::TestHost host;
    ASSERT_TRUE(Filter(FourColouredFacets(), {7}));
    writes = host.faults.Calls("fwrite");
    ASSERT_GE(writes, 2);
  }
  for (int k = 1; k <= writes; ++k) {
    support::TestHost host;
    host.faults.FailCall("fwrite", k);
    EXPECT_TRUE(Filter(FourColouredFacets(), {7})) << k;
    EXPECT_FALSE(std::filesystem::exists(Output())) << k;
    EXPECT_THAT(host.OpenStreams(), IsEmpty()) << k;
  }
}

TEST_F(FilterFailuresTest, WithoutMemoryForTheChannelNothingIsTouched) {
  support::TestHost host;
  host.faults.FailCall("new", 1);
  support::WriteWholeFile(Output(), "what an earlier filter left");
  EXPECT_FALSE(Filter(FourColouredFacets(), {7}));
  EXPECT_EQ(OutputBytes(), "what an earlier filter left");
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

TEST_F(FilterFailuresTest, AllocationsAreChannelHandlesAndABlockOfEachKind) {
  support::TestHost host;
  ASSERT_TRUE(Filter(FourColouredFacets(), {7}));
  EXPECT_EQ(host.faults.Calls("new"), 4);
}

TEST_F(FilterFailuresTest, WithoutMemoryForTheHandlesTheHeaderIsLeft) {
  support::TestHost host;
  host.faults.FailCall("new", 2);
  EXPECT_FALSE(Filter(FourColouredFacets(), {7}));
  EXPECT_EQ(OutputBytes(), kHeader);
}

TEST_F(FilterFailuresTest, OutputThatMissesAVertexForLackOfMemoryIsRemovedUnnoticed) {
  support::TestHost host;
  host.faults.FailCall("new", 3);
  EXPECT_TRUE(Filter(FourColouredFacets(), {7}));
  EXPECT_FALSE(std::filesystem::exists(Output()));
}

TEST_F(FilterFailuresTest, FacetsWithoutMemoryAreMissingUnnoticed) {
  support::TestHost host;
  host.faults.FailFrom("new", 4);
  EXPECT_TRUE(Filter(FourColouredFacets(), {7}));
  EXPECT_EQ(OutputBytes(), support::BinarySurfaceBytes(ItsUsedVertices()));
}

TEST_F(FilterFailuresTest, UsersStopDuringTheLoadMakesTheResultFalse) {
  support::TestHost host;
  Watch(host);
  host.faults.RunAt("m_fopen", 2, [] { throw UIExceptionQZC(); });
  bool filtered = true;
  EXPECT_NO_THROW(filtered = Filter(FourColouredFacets(), {7}));
  EXPECT_FALSE(filtered);
  EXPECT_EQ(OutputBytes(), kHeader);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(FilterFailuresTest, OtherExceptionsPassWithTheOutputClosed) {
  support::TestHost host;
  Watch(host);
  host.faults.RunAt("m_fopen", 2, [] { throw std::runtime_error("not the kernel's own"); });
  EXPECT_THROW(Filter(FourColouredFacets(), {7}), std::runtime_error);
  EXPECT_EQ(OutputBytes(), kHeader);
  EXPECT_EQ(host.events.Events().back(), "m_fclose SurfaceXferQZ job\\out.iff");
}

TEST_F(FilterFailuresTest, ExceptionInTheMiddleOfTheLoadStillClosesTheOutput) {
  support::TestHost host;
  Watch(host);
  host.faults.RunAt("fread", 2, [] { throw UIExceptionQZC(); });
  EXPECT_FALSE(Filter(FourColouredFacets(), {7}));
  EXPECT_EQ(OutputBytes(), kHeader);
  // The loader gives back neither its stream nor its handles when its channel throws.
  EXPECT_THAT(host.OpenStreams(), ElementsAre("QZTUTLA2 job\\in.iff"));
  support::TakeLostBlocks();
}

}  // namespace

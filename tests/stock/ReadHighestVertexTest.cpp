#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "platform/files.h"
#include "stock/ReadHighestVertex.h"
#include "support/FileBuilder.h"
#include "support/TempDirectory.h"

namespace {

using Point = std::array<double, 3>;

class ReadHighestVertexTest : public ::testing::Test {
 protected:
  bool Read(const std::string& bytes) {
    const std::string path = directory / "surface";
    support::WriteWholeFile(path, bytes);
    FILE* stream = OpenStdFile(path.c_str(), "rb");
    const bool read = ReadHighestVertex(stream, highest.data());
    std::fclose(stream);
    return read;
  }

  static std::string Vertices(const std::vector<Point>& vertices) {
    support::FileBuilder file;
    file.Text("binary surface").Int32(static_cast<std::int64_t>(vertices.size())).Int32(0);
    for (const Point& vertex : vertices) file.Doubles({vertex[0], vertex[1], vertex[2]});
    return file.Bytes();
  }

  support::TempDirectory directory;
  Point highest{-7, -7, -7};
};

TEST_F(ReadHighestVertexTest, GreatestZWins) {
  EXPECT_TRUE(Read(Vertices({{1, 2, 3}, {4, 5, 6}, {7, 8, 5}})));
  EXPECT_EQ(highest, (Point{4, 5, 6}));
}

TEST_F(ReadHighestVertexTest, OfSeveralTheFirstWins) {
  EXPECT_TRUE(Read(Vertices({{1, 2, 3}, {4, 5, 6}, {7, 8, 6}, {9, 9, 6}})));
  EXPECT_EQ(highest, (Point{4, 5, 6}));
}

TEST_F(ReadHighestVertexTest, HeightsBelowZeroAreHeightsToo) {
  EXPECT_TRUE(Read(Vertices({{1, 2, -3}, {4, 5, -2}, {6, 7, -9}})));
  EXPECT_EQ(highest, (Point{4, 5, -2}));
}

TEST_F(ReadHighestVertexTest, HeightThatIsNoNumberStaysWhenItIsTheFirst) {
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Read(Vertices({{1, 2, kNoNumber}, {4, 5, 6}})));
  EXPECT_TRUE(std::isnan(highest[2]));
  EXPECT_EQ(highest[0], 1);
  EXPECT_TRUE(Read(Vertices({{4, 5, 6}, {1, 2, kNoNumber}})));
  EXPECT_EQ(highest, (Point{4, 5, 6}));
}

TEST_F(ReadHighestVertexTest, NeitherHeaderNorTriangleCountAreLookedAt) {
  for (const std::int64_t triangles : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{99}}) {
    support::FileBuilder file;
    file.Text("another header").Int32(1).Int32(triangles).Doubles({1, 2, 3});
    EXPECT_TRUE(Read(file.Bytes())) << triangles;
    EXPECT_EQ(highest, (Point{1, 2, 3}));
  }
}

TEST_F(ReadHighestVertexTest, WithoutAVertexThereIsNone) {
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    support::FileBuilder file;
    file.Text("binary surface").Int32(count).Int32(1).Doubles({1, 2, 3});
    EXPECT_FALSE(Read(file.Bytes())) << count;
  }
}

TEST_F(ReadHighestVertexTest, EveryLengthThatCutsAVertexIsRefused) {
  const std::string whole = Vertices({{1, 2, 3}, {4, 5, 6}});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(Read(whole.substr(0, length))) << length;
  }
  EXPECT_TRUE(Read(whole));
}

TEST_F(ReadHighestVertexTest, CountThatTheFileDoesNotLiveUpToIsRefused) {
  support::FileBuilder file;
  file.Text("binary surface").Int32(std::numeric_limits<std::int32_t>::max()).Int32(1);
  EXPECT_FALSE(Read(file.Doubles({1, 2, 3}).Bytes()));
}

TEST_F(ReadHighestVertexTest, MoreVerticesThanABlockHolds) {
  std::vector<Point> many(10000, Point{0, 0, 1});
  many[9998] = {1, 2, 3};
  EXPECT_TRUE(Read(Vertices(many)));
  EXPECT_EQ(highest, (Point{1, 2, 3}));
}

}  // namespace

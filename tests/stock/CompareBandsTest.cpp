#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "platform/files.h"
#include "stock/CompareBands.h"
#include "stock/WriteCompareBandsText.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/NothrowBlocks.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

class CompareBandsTest : public ::testing::Test {
 protected:
  bool Read(const std::string& bytes) {
    const std::string path = directory / "bands";
    support::WriteWholeFile(path, bytes);
    FILE* stream = OpenStdFile(path.c_str(), "rb");
    const bool read = ReadCompareBands(stream, &bands);
    std::fclose(stream);
    return read;
  }

  support::Bands Received() const {
    return {static_cast<std::int32_t>(bands.stockColour),
            bands.divisions,
            {bands.colours.get(), bands.colours.get() + bands.divisions},
            {bands.distances.get(), bands.distances.get() + bands.divisions}};
  }

  std::string Text() const {
    const std::string path = directory / "text";
    FILE* stream = OpenStdFile(path.c_str(), "w");
    WriteCompareBandsText(bands, stream);
    std::fclose(stream);
    return support::ReadWholeFile(path);
  }

  bool AreHostColours(std::int32_t stockColour, const std::vector<std::uint32_t>& colours) {
    const auto count = static_cast<std::int32_t>(colours.size());
    EXPECT_TRUE(Read(support::CompareInfoBytes(
        {stockColour, count, colours, std::vector<double>(colours.size())})));
    return HaveHostColours(bands);
  }

  support::TempDirectory directory;
  CompareBands bands;
};

TEST_F(CompareBandsTest, FieldsLieOneBehindTheOther) {
  support::FileBuilder file;
  file.Int32(7).Int32(3).Uint32(10).Uint32(20).Uint32(30).Doubles({-1.5, 0, 2.25});
  EXPECT_TRUE(Read(file.Bytes()));
  EXPECT_EQ(Received(), (support::Bands{7, 3, {10, 20, 30}, {-1.5, 0, 2.25}}));
}

TEST_F(CompareBandsTest, WhatLiesBehindTheDistancesIsNotLookedAt) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({7, 1, {10}, {2.5, 99, 98}}) + "x"));
  EXPECT_EQ(Received(), (support::Bands{7, 1, {10}, {2.5}}));
}

TEST_F(CompareBandsTest, EveryLengthInFrontOfTheColoursIsRefused) {
  const std::string whole = support::CompareInfoBytes({7, 2, {10, 20}, {1, 2}});
  for (std::size_t length = 0; length < 8; ++length) {
    EXPECT_FALSE(Read(whole.substr(0, length))) << length;
  }
}

TEST_F(CompareBandsTest, FewerThanOneDivisionIsRefused) {
  for (const std::int32_t divisions : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_FALSE(Read(support::CompareInfoBytes({7, divisions, {10, 20}, {1, 2}}))) << divisions;
  }
}

TEST_F(CompareBandsTest, EveryLengthBehindTheNumbersIsTakenAndWhatIsMissingIsZero) {
  const support::Bands all{7, 3, {10, 20, 30}, {-1.5, 0.5, 2.25}};
  const std::string whole = support::CompareInfoBytes(all);
  ASSERT_EQ(whole.size(), 8u + 3 * 4 + 3 * 8);
  for (std::size_t length = 8; length <= whole.size(); ++length) {
    support::Bands expected = all;
    for (std::size_t i = 0; i < 3; ++i) {
      if (length < 8 + 4 * (i + 1)) expected.colours[i] = 0;
      if (length < 20 + 8 * (i + 1)) expected.distances[i] = 0;
    }
    ASSERT_TRUE(Read(whole.substr(0, length))) << length;
    ASSERT_EQ(Received(), expected) << length;
  }
}

TEST_F(CompareBandsTest, MoreBandsThanABlockOfTheFileHolds) {
  support::Bands many{1, 20000, {}, {}};
  for (std::uint32_t i = 0; i < 20000; ++i) {
    many.colours.push_back(i % 257);
    many.distances.push_back(0.25 * i - 7);
  }
  EXPECT_TRUE(Read(support::CompareInfoBytes(many)));
  EXPECT_EQ(Received(), many);
}

TEST_F(CompareBandsTest, CountThatTheFileIsFarFromHoldingIsRefusedWithoutTheMemoryForIt) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  EXPECT_FALSE(Read(support::CompareInfoBytes({7, kMost, {10}, {}})));
  EXPECT_FALSE(Read(support::CompareInfoBytes({7, (1 << 20) + 1, {10}, {}})));
}

TEST_F(CompareBandsTest, MillionMissingBandsAreZeros) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({7, 1 << 20, {10}, {}})));
  const support::Bands received = Received();
  EXPECT_EQ(received.colours[0], 10u);
  EXPECT_EQ(std::count(received.colours.begin(), received.colours.end(), 0u), (1 << 20) - 1);
  EXPECT_EQ(std::count(received.distances.begin(), received.distances.end(), 0.0), 1 << 20);
}

TEST_F(CompareBandsTest, OfMoreThanAMillionBandsHalfMayBeMissing) {
  constexpr std::int32_t kAnnounced = 3 << 20;
  const std::vector<std::uint32_t> half(kAnnounced / 2, 9);
  const std::vector<double> distances(kAnnounced / 2, 0.5);
  support::Bands announced{7, kAnnounced, half, {}};
  announced.colours.resize(kAnnounced);
  announced.distances = distances;
  std::string bytes = support::CompareInfoBytes(announced);
  ASSERT_TRUE(Read(bytes));
  announced.distances.resize(kAnnounced);
  EXPECT_TRUE(Received() == announced);
  bytes.pop_back();
  EXPECT_FALSE(Read(bytes));
  EXPECT_FALSE(
      Read(support::CompareInfoBytes({7, kAnnounced, {half.begin() + 1, half.end()}, {}})));
}

TEST_F(CompareBandsTest, MoreThanAMillionBandsAreReadWhole) {
  support::Bands many{1, (1 << 21) + 5, {}, {}};
  for (std::int32_t i = 0; i < many.divisions; ++i) {
    many.colours.push_back(static_cast<std::uint32_t>(i % 257));
    many.distances.push_back(i);
  }
  EXPECT_TRUE(Read(support::CompareInfoBytes(many)));
  EXPECT_TRUE(Received() == many);
}

TEST_F(CompareBandsTest, EarlierBandsDoNotShineThrough) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({7, 2, {10, 20}, {1, 2}})));
  EXPECT_TRUE(Read(support::CompareInfoBytes({8, 2, {}, {}})));
  EXPECT_EQ(Received(), (support::Bands{8, 2, {0, 0}, {0, 0}}));
}

TEST_F(CompareBandsTest, WithoutMemoryForEitherListTheBandsAreRefused) {
  for (int k = 1; k <= 2; ++k) {
    support::TestHost host;
    host.faults.FailCall("new", k);
    EXPECT_FALSE(Read(support::CompareInfoBytes({7, 1, {10}, {1}}))) << k;
    bands = {};
  }
}

TEST_F(CompareBandsTest, ColoursGoUpTo256) {
  EXPECT_TRUE(AreHostColours(256, {256, 0, 256}));
  EXPECT_TRUE(AreHostColours(0, {0}));
  EXPECT_FALSE(AreHostColours(257, {1}));
  EXPECT_FALSE(AreHostColours(1, {257, 1}));
  EXPECT_FALSE(AreHostColours(1, {1, 257}));
}

TEST_F(CompareBandsTest, NegativeColoursAreLargeOnes) {
  EXPECT_FALSE(AreHostColours(-1, {1}));
  EXPECT_FALSE(AreHostColours(1, {1, 0xFFFFFFFF}));
  EXPECT_FALSE(AreHostColours(std::numeric_limits<std::int32_t>::min(), {1}));
}

TEST_F(CompareBandsTest, TextHasALineForEachValueAllColoursFirst) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({256, 3, {1, 20, 256}, {-100, 0.5, 1e10}})));
  EXPECT_EQ(Text(), support::TextFileBytes("Stock model color 256\n"
                                           "Number of divisions 3\n"
                                           "Color[0] = 1\n"
                                           "Color[1] = 20\n"
                                           "Color[2] = 256\n"
                                           "Distance[0] =      -100.0000000000\n"
                                           "Distance[1] =         0.5000000000\n"
                                           "Distance[2] = 10000000000.0000000000\n"));
}

TEST_F(CompareBandsTest, HalfPrintsAsEightBlanksAndTwelveCharacters) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({1, 1, {2}, {0.5}})));
  const std::string line = "Distance[0] = " + std::string(8, ' ') + "0.5000000000";
  EXPECT_EQ(line.size(), 14u + 20);
  EXPECT_EQ(Text(),
            support::TextFileBytes("Stock model color 1\nNumber of divisions 1\nColor[0] = 2\n" +
                                   line + "\n"));
}

TEST_F(CompareBandsTest, LongestNumbersHaveTheirPlaceInALine) {
  constexpr double kLowest = -0x1p1023;  // with its 308 digits
  constexpr int kMany = 2000;            // so that lines end in many places of the writer's blocks
  EXPECT_TRUE(Read(support::CompareInfoBytes(
      {256, kMany, std::vector<std::uint32_t>(kMany), std::vector<double>(kMany, kLowest)})));
  const std::string digits =
      "-89884656743115795386465259539451236680898848947115328636715040578866337902750481566354238"
      "661203768010560056939935696678829394884407208311246423715319737062188883946712432742638151"
      "109800623047059726541476042502884419075341171231440736956555270413618581675255342293149119"
      "973622969239858152417678164812112068608.0000000000";
  std::string expected = "Stock model color 256\nNumber of divisions 2000\n";
  for (int i = 0; i < kMany; ++i) expected += "Color[" + std::to_string(i) + "] = 0\n";
  for (int i = 0; i < kMany; ++i) {
    expected += "Distance[" + std::to_string(i) + "] = " + digits + "\n";
  }
  EXPECT_TRUE(Text() == support::TextFileBytes(expected));
}

TEST_F(CompareBandsTest, TextOfMoreBandsThanABlockHoldsIsWhole) {
  constexpr std::int32_t kMany = 5000;
  EXPECT_TRUE(Read(support::CompareInfoBytes({1, kMany, {}, {}})));
  std::string expected = "Stock model color 1\nNumber of divisions 5000\n";
  for (std::int32_t i = 0; i < kMany; ++i) expected += "Color[" + std::to_string(i) + "] = 0\n";
  for (std::int32_t i = 0; i < kMany; ++i) {
    expected += "Distance[" + std::to_string(i) + "] =         0.0000000000\n";
  }
  EXPECT_EQ(Text(), support::TextFileBytes(expected));
}

TEST_F(CompareBandsTest, FullDiskEndsTheTextAndIsNoMatter) {
  EXPECT_TRUE(Read(support::CompareInfoBytes({1, 1, {2}, {0.5}})));
  support::TestHost host;
  host.faults.LimitDisk(5);
  EXPECT_EQ(Text(), "Stock");
}

}  // namespace

// The points of a file, rewritten where they stand.

#include <array>
#include <cmath>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "curves/ShiftedFiles.h"
#include "support/CurveFile.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/JobTest.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double kCentre[3] = {100.25, -3.5, 0.125};

/// A file "points" in the host's temporary directory.
class ShiftedFilesTest : public support::JobTest {
 protected:
  ShiftedFilesTest() { host.temporaryDirectory = WorkDir().GetString(); }

  void Put(const std::string& bytes) { support::WriteWholeFile(InJob("points"), bytes); }
  std::string Now() const { return support::ReadWholeFile(InJob("points")); }
};

/// One of the four ways to rewrite a file, with a file of `count` points for it.
struct Way {
  const char* name;
  std::size_t header;
  std::function<bool(bool scaled, double s)> rewrite;
  std::function<double(double p, int axis, bool scaled, double s)> change;
};

double Shifted(double p, int axis, bool scaled, double s) {
  const double moved = p - kCentre[axis];
  return scaled ? moved * s : moved;
}

double Restored(double p, int axis, bool scaled, double s) {
  const double divided = scaled ? p / s : p;
  return divided + kCentre[axis];
}

std::vector<Way> Ways() {
  return {
      {"shift of a surface", 14,
       [](bool scaled, double s) { return ShiftSurfaceFile(scaled, s, kCentre, "points"); },
       Shifted},
      {"restoring of a surface", 14,
       [](bool scaled, double s) { return RestoreSurfaceFile(scaled, s, kCentre, "points"); },
       Restored},
      {"restoring of curves", 13,
       [](bool scaled, double s) { return RestoreCurveFile(0, scaled, s, kCentre, "points"); },
       Restored},
      {"restoring of a tree", 18,
       [](bool scaled, double s) { return RestoreCurveFile(1, scaled, s, kCentre, "points"); },
       Restored},
  };
}

double Coordinate(int point, int axis) { return 0.1 * point - 7.3 * axis; }

std::string PointsFile(std::size_t header, int count, const std::function<double(int, int)>& at) {
  support::FileBuilder file;
  // Any text will do, and what follows the points is not looked at.
  file.Text(std::string(header, '?')).Int32(count).Int32(-7);
  for (int i = 0; i < count; ++i) file.Doubles({at(i, 0), at(i, 1), at(i, 2)});
  return file.Text("the rest").Bytes();
}

TEST_F(ShiftedFilesTest, PointsAreChangedAndNothingElse) {
  for (const Way& way : Ways()) {
    for (const bool scaled : {false, true}) {
      SCOPED_TRACE(std::string(way.name) + (scaled ? ", scaled" : ""));
      Put(PointsFile(way.header, 5, Coordinate));
      EXPECT_TRUE(way.rewrite(scaled, 0.78));
      EXPECT_EQ(Now(), PointsFile(way.header, 5, [&](int point, int axis) {
                  return way.change(Coordinate(point, axis), axis, scaled, 0.78);
                }));
      EXPECT_THAT(host.OpenStreams(), IsEmpty());
    }
  }
}

TEST_F(ShiftedFilesTest, NumberOfPointsAroundTheSizeOfABlockMakesNoDifference) {
  for (const Way& way : Ways()) {
    for (const int count : {0, 1, 2047, 2048, 2049, 4096, 5000}) {
      SCOPED_TRACE(std::string(way.name) + " " + std::to_string(count));
      Put(PointsFile(way.header, count, Coordinate));
      EXPECT_TRUE(way.rewrite(true, 3.0));
      EXPECT_TRUE(Now() == PointsFile(way.header, count, [&](int point, int axis) {
                    return way.change(Coordinate(point, axis), axis, true, 3.0);
                  }));
    }
  }
}

TEST_F(ShiftedFilesTest, TrianglesAndSegmentsStayAsTheyAre) {
  support::Surface cube = support::Cube(1, 200);
  Put(support::BinarySurfaceBytes(cube));
  EXPECT_TRUE(ShiftSurfaceFile(true, 2.0, kCentre, "points"));
  for (auto& vertex : cube.vertices) {
    for (int axis = 0; axis < 3; ++axis) {
      auto& coordinate = vertex[static_cast<std::size_t>(axis)];
      coordinate = Shifted(coordinate, axis, true, 2.0);
    }
  }
  EXPECT_EQ(Now(), support::BinarySurfaceBytes(cube));

  for (const int mode : {0, 1}) {
    support::CurveFile file{mode, {{1, 2, 3}, {4, 5, 6}}, 9, {{{1, 2}, {2, 1}}, {{2, 1}, {1, 2}}}};
    Put(support::CurveFileBytes(file));
    EXPECT_TRUE(RestoreCurveFile(mode, false, 1.0, kCentre, "points"));
    file.points = {{101.25, -1.5, 3.125}, {104.25, 1.5, 6.125}};
    EXPECT_EQ(Now(), support::CurveFileBytes(file));
  }
}

TEST_F(ShiftedFilesTest, HostIsAskedForItsTemporaryDirectoryAndOpensAndCloses) {
  for (const Way& way : Ways()) {
    Put(PointsFile(way.header, 2, Coordinate));
    host.events.Clear();
    way.rewrite(false, 1.0);
    EXPECT_THAT(host.events.Events(),
                ElementsAre("GetTempDirectory", "m_fopen_hl QZTUtlA job\\ points rb+",
                            "m_fclose QZTUtlA job\\points"));
  }
}

TEST_F(ShiftedFilesTest, StatusOfTheOpenIsNotLookedAt) {
  Put(PointsFile(14, 1, Coordinate));
  host.faults.FailCall("m_fopen_hl status", 1);
  EXPECT_TRUE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(ShiftedFilesTest, FileThatCannotBeOpenedIsFalse) {
  for (const Way& way : Ways()) {
    EXPECT_FALSE(way.rewrite(false, 1.0)) << way.name;
    EXPECT_FALSE(JobHas("points"));
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_F(ShiftedFilesTest, NegativeCountIsNoPoints) {
  const std::string bytes = support::FileBuilder()
                                .Text(std::string(14, '?'))
                                .Int32(-1)
                                .Int32(1)
                                .Doubles({1, 2, 3})
                                .Bytes();
  Put(bytes);
  EXPECT_TRUE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
  EXPECT_EQ(Now(), bytes);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_F(ShiftedFilesTest, HeadThatEndsShortIsFalseAndLeavesTheStreamOpen) {
  for (const Way& way : Ways()) {
    const std::string whole = PointsFile(way.header, 2, Coordinate);
    for (std::size_t length = 0; length < way.header + 8; ++length) {
      SCOPED_TRACE(std::string(way.name) + " " + std::to_string(length));
      Put(whole.substr(0, length));
      const std::size_t open = host.OpenStreams().size();
      EXPECT_FALSE(way.rewrite(false, 1.0));
      EXPECT_EQ(Now(), whole.substr(0, length));
      EXPECT_EQ(host.OpenStreams().size(), open + 1);
    }
  }
}

TEST_F(ShiftedFilesTest, UnknownModeIsFalseAndLeavesTheStreamOpen) {
  const std::string whole = PointsFile(18, 2, Coordinate);
  Put(whole);
  for (const int mode : {2, -1, 256}) {
    host.events.Clear();
    EXPECT_FALSE(RestoreCurveFile(mode, false, 1.0, kCentre, "points"));
    EXPECT_THAT(host.events.Events(),
                ElementsAre("GetTempDirectory", "m_fopen_hl QZTUtlA job\\ points rb+"));
    EXPECT_EQ(Now(), whole);
  }
  EXPECT_EQ(host.OpenStreams().size(), 3u);
}

TEST_F(ShiftedFilesTest, BodyThatEndsShortIsFalseWithThePointsBeforeItRewritten) {
  for (const Way& way : Ways()) {
    // Within the first block, and some points behind it.
    for (const int whole : {0, 1, 2, 2047, 2048, 2050}) {
      for (const std::size_t more : {std::size_t{0}, std::size_t{1}, std::size_t{23}}) {
        SCOPED_TRACE(std::string(way.name) + " " + std::to_string(whole) + " points and " +
                     std::to_string(more) + " bytes");
        const std::size_t length = way.header + 8 + 24 * static_cast<std::size_t>(whole) + more;
        Put(PointsFile(way.header, 5000, Coordinate).substr(0, length));
        const std::size_t open = host.OpenStreams().size();
        EXPECT_FALSE(way.rewrite(true, 3.0));
        const std::string expected = PointsFile(way.header, 5000, [&](int point, int axis) {
                                       const double p = Coordinate(point, axis);
                                       return point < whole ? way.change(p, axis, true, 3.0) : p;
                                     }).substr(0, length);
        EXPECT_TRUE(Now() == expected);
        EXPECT_EQ(host.OpenStreams().size(), open + 1);
      }
    }
  }
}

TEST_F(ShiftedFilesTest, CountBeyondAllFilesNeedsNoMemory) {
  Put(support::FileBuilder()
          .Text(std::string(14, '?'))
          .Int32(0x7FFFFFFF)
          .Int32(1)
          .Doubles({1, 2, 3})
          .Bytes());
  EXPECT_FALSE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
  EXPECT_EQ(Now(), support::FileBuilder()
                       .Text(std::string(14, '?'))
                       .Int32(0x7FFFFFFF)
                       .Int32(1)
                       .Doubles({-99.25, 5.5, 2.875})
                       .Bytes());
  EXPECT_EQ(host.faults.Calls("new"), 0);
}

TEST_F(ShiftedFilesTest, EveryFailingReadWriteAndSeekIsFalseAndLeavesTheStreamOpen) {
  for (const char* function : {"fread", "fwrite", "fseek"}) {
    Put(PointsFile(14, 5000, Coordinate));
    host.faults = {};
    ASSERT_TRUE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
    const int calls = host.faults.Calls(function);
    ASSERT_GE(calls, 3) << function;
    const std::size_t open = host.OpenStreams().size();
    for (int k = 1; k <= calls; ++k) {
      SCOPED_TRACE(std::string(function) + " " + std::to_string(k));
      Put(PointsFile(14, 5000, Coordinate));
      host.faults = {};
      host.faults.FailCall(function, k);
      EXPECT_FALSE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
      EXPECT_EQ(host.OpenStreams().size(), open + static_cast<std::size_t>(k));
    }
  }
}

TEST_F(ShiftedFilesTest, StreamThatIsLeftOpenHoldsNothingBack) {
  Put(PointsFile(14, 5, Coordinate));
  host.faults.FailCall("fseek", 2);
  EXPECT_FALSE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
  EXPECT_EQ(host.OpenStreams().size(), 1u);
  EXPECT_EQ(Now(), PointsFile(14, 5, [](int point, int axis) {
              return Shifted(Coordinate(point, axis), axis, false, 1.0);
            }));
}

TEST_F(ShiftedFilesTest, WritingDoesNotGoBeyondTheDiskAndIsThenFalse) {
  Put(PointsFile(14, 5000, Coordinate));
  host.faults.LimitDisk(2048 * 24);
  EXPECT_FALSE(ShiftSurfaceFile(false, 1.0, kCentre, "points"));
  EXPECT_TRUE(Now() == PointsFile(14, 5000, [](int point, int axis) {
                const double p = Coordinate(point, axis);
                return point < 2048 ? Shifted(p, axis, false, 1.0) : p;
              }));
}

TEST_F(ShiftedFilesTest, FullPathIsTakenAsItStands) {
  Put(PointsFile(14, 1, Coordinate));
  host.temporaryDirectory = "nowhere\\";
  const std::string name = std::string(WorkDir().GetString()) + "points";
  EXPECT_TRUE(ShiftSurfaceFile(false, 1.0, kCentre, name.c_str()));
  EXPECT_THAT(host.events.Only({"m_fopen_hl"}),
              ElementsAre("m_fopen_hl QZTUtlA nowhere\\ job\\points rb+"));
}

}  // namespace

// Random segments, against the plain channel: the same results, the same bytes.

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "ChannelTest.h"
#include "platform/QZCore.h"
#include "support/PlainCurveChannel.h"

namespace {

/// How the segments of one attempt hang together.
struct Recipe {
  int points;      // few points: many crossings and branches
  int loops;       // closed ones of up to `longest` segments
  int chains;      // open ones
  int strays;      // single segments
  int duplicates;  // of what there is already
  int longest;
  bool shuffled;
};

class Maker {
 public:
  explicit Maker(unsigned seed) : m_random(seed) {}

  int Below(int limit) {
    return static_cast<int>(m_random() % static_cast<unsigned>(std::max(limit, 1)));
  }

  Recipe AnyRecipe() {
    const int points = 2 + Below(Below(4) == 0 ? 400 : 12);
    return {points,        Below(6),     Below(6), Below(10), Below(4) == 0 ? Below(8) : 0,
            2 + Below(12), Below(4) != 0};
  }

  support::Outline Make(const Recipe& recipe) {
    support::Outline outline;
    // Steps of a half tolerance and ten of them: some loops are too small.
    const double step = Below(2) == 0 ? 0.05 : 0.5;
    for (int i = 0; i < recipe.points; ++i) {
      outline.points.push_back({step * Below(9), step * Below(9), step * Below(9)});
    }
    for (int i = 0; i < recipe.loops; ++i) AddPath(recipe, true, &outline.segments);
    for (int i = 0; i < recipe.chains; ++i) AddPath(recipe, false, &outline.segments);
    for (int i = 0; i < recipe.strays; ++i) {
      outline.segments.emplace_back(Point(recipe), Point(recipe));
    }
    for (int i = 0; i < recipe.duplicates && !outline.segments.empty(); ++i) {
      const auto which = Below(static_cast<int>(outline.segments.size()));
      outline.segments.push_back(outline.segments[static_cast<std::size_t>(which)]);
    }
    if (recipe.shuffled) Shuffle(&outline.segments);
    return outline;
  }

 private:
  int Point(const Recipe& recipe) { return 1 + Below(recipe.points); }

  void AddPath(const Recipe& recipe, bool closed, Segments* segments) {
    const int first = Point(recipe);
    int at = first;
    const int length = 1 + Below(recipe.longest);
    for (int i = 0; i < length; ++i) {
      const int next = closed && i == length - 1 ? first : Point(recipe);
      segments->emplace_back(at, next);
      at = next;
    }
  }

  // Not std::shuffle, which is not the same everywhere.
  void Shuffle(Segments* segments) {
    for (std::size_t i = segments->size(); i > 1; --i) {
      std::swap((*segments)[i - 1],
                (*segments)[static_cast<std::size_t>(Below(static_cast<int>(i)))]);
    }
  }

  std::mt19937 m_random;
};

class RandomSegmentsTest : public ChannelTest {
 protected:
  std::string PlainName() const { return (directory.Path() / "plain.tmp").string(); }
  std::string PlainBytes() const { return support::ReadWholeFile(PlainName()); }
};

// What kinds of outcome the attempts had: a generator that never fails a joining tests nothing.
struct Outcomes {
  int failed = 0, joined = 0, withCurves = 0;
};

TEST_F(RandomSegmentsTest, SameResultAndSameFileAsThePlainChannel) {
  Outcomes outcomes;
  for (unsigned seed = 1; seed <= 1000; ++seed) {
    Maker maker(seed);
    const support::Outline outline = maker.Make(maker.AnyRecipe());
    const int mode = maker.Below(2);
    CurveXferQZ channel(mode, Name().c_str());
    support::PlainCurveChannel plain(mode, PlainName().c_str(), tol);
    const int result = PlayAndClose(&channel, outline);
    ASSERT_EQ(result, PlayAndClose(&plain, outline)) << seed;
    plain.Finish();
    const std::string bytes = Bytes();
    ASSERT_TRUE(bytes == PlainBytes()) << seed;
    ++(result == 0 ? outcomes.failed : outcomes.joined);
    const std::size_t withoutCurves =
        support::CurveFileHeader(mode).size() + 8 + 24 * outline.points.size();
    if (bytes.size() > withoutCurves) ++outcomes.withCurves;
  }
  EXPECT_GT(outcomes.failed, 100);
  EXPECT_GT(outcomes.joined, 100);
  EXPECT_GT(outcomes.withCurves, 100);
}

TEST_F(RandomSegmentsTest, SameFileThroughSeveralClosesAndResets) {
  int mismatches = 0;
  for (unsigned seed = 1; seed <= 600; ++seed) {
    Maker maker(seed);
    const int mode = maker.Below(2);
    CurveXferQZ channel(mode, Name().c_str());
    support::PlainCurveChannel plain(mode, PlainName().c_str(), tol);
    for (int round = 0; round < 4; ++round) {
      if (maker.Below(2) == 0) {
        channel.Reset();
        plain.Reset();
      }
      Recipe recipe = maker.AnyRecipe();
      // Points that earlier lists speak of must be there: a channel's storage never shrinks.
      recipe.points = 12;
      recipe.strays += 10 * round;
      const support::Outline outline = maker.Make(recipe);
      Play(&channel, outline);
      Play(&plain, outline);
      const int result = channel.Close();
      ASSERT_EQ(result, plain.Close()) << seed << " round " << round;
      if (result == 0) ++mismatches;
    }
    plain.Finish();
    ASSERT_TRUE(Bytes() == PlainBytes()) << seed;
  }
  EXPECT_GT(mismatches, 100);
}

}  // namespace

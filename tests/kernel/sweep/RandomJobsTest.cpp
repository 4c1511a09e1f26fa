// Jobs drawn from fixed seeds: whatever the shape, the result is sound, and it does not depend on
// the number of threads.

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "SweepRun.h"
#include "kernel/common/Workers.h"
#include "support/geometry/MeshChecks.h"

namespace sweep_test {
namespace {

class Dice {
 public:
  explicit Dice(unsigned seed) : m_engine(seed) {}
  // The engine's numbers are the same on every system; the library's distributions are not.
  double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
  }
  unsigned Below(unsigned count) { return static_cast<unsigned>(m_engine() % count); }

 private:
  std::mt19937 m_engine;
};

formats::ConvexTool RandomTool(Dice& dice) {
  switch (dice.Below(4)) {
    case 0:
      return Ball(dice.Between(1, 4));
    case 1:
      return Flat(dice.Between(1, 4));
    case 2:
      return BullNose(dice.Between(2, 4), dice.Between(0.6, 1.5));
    default:
      return {dice.Between(0.6, 1), dice.Between(0.5, 2), dice.Between(0, 20), 90, 0, 0};
  }
}

std::vector<formats::PathRecord> RandomPaths(Dice& dice) {
  std::vector<formats::PathRecord> paths;
  for (unsigned p = 0; p <= dice.Below(3); ++p) {
    std::vector<std::array<double, 3>> tips;
    for (unsigned i = 0; i <= dice.Below(8); ++i) {
      tips.push_back({dice.Between(-3, 23), dice.Between(-3, 18), dice.Between(-1, 11)});
    }
    paths.push_back(PathOf(RandomTool(dice), 0.1, tips, static_cast<int>(10 + p)));
  }
  return paths;
}

formats::Mesh TurnedBlock(double turn) {
  formats::Mesh block = support::Box({0, 0, 0}, {20, 15, 10}, 1);
  for (auto& p : block.vertices) {
    const double x = std::cos(turn) * p[0] - std::sin(turn) * p[1];
    const double y = std::sin(turn) * p[0] + std::cos(turn) * p[1];
    p = {x, std::cos(0.7 * turn) * y - std::sin(0.7 * turn) * p[2],
         std::sin(0.7 * turn) * y + std::cos(0.7 * turn) * p[2]};
  }
  return block;
}

class RandomJobs : public testing::TestWithParam<unsigned> {};

TEST_P(RandomJobs, GiveASoundMeshNoLargerThanTheStock) {
  Dice dice(GetParam());
  const double turn = GetParam() % 2 == 0 ? 0 : dice.Between(0, 1);
  const SweepResult run = RunSweep(TurnedBlock(turn), RandomPaths(dice));
  EXPECT_TRUE(run.dialog.errors.empty());
  ExpectSound(run.mesh);
  EXPECT_LE(support::Volume(run.mesh), 3000 * (1 + 1e-9));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomJobs, testing::Range(0U, 24U));

TEST(RandomJobsThreads, OneThreadAndManyGiveTheSameBytes) {
  for (const unsigned seed : {3U, 8U}) {
    Dice first(seed);
    kernel::LimitWorkers(1);
    const SweepResult one = RunSweep(TurnedBlock(0.3), RandomPaths(first));
    Dice second(seed);
    kernel::LimitWorkers(7);
    const SweepResult many = RunSweep(TurnedBlock(0.3), RandomPaths(second));
    kernel::LimitWorkers(0);
    EXPECT_EQ(one.mesh.vertices, many.mesh.vertices);
    ASSERT_EQ(one.mesh.facets.size(), many.mesh.facets.size());
    for (std::size_t i = 0; i < one.mesh.facets.size(); ++i) {
      ASSERT_EQ(one.mesh.facets[i].vertices, many.mesh.facets[i].vertices);
      ASSERT_EQ(one.mesh.facets[i].colour, many.mesh.facets[i].colour);
    }
  }
}

}  // namespace
}  // namespace sweep_test

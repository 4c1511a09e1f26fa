#include "Fits.h"

#include <gtest/gtest.h>

namespace sweep_test {

void ExpectFits(const SweepResult& run, const support::MovedTools& tools, std::uint8_t cut,
                double tolerance, const support::Point& low, const support::Point& high) {
  EXPECT_LE(support::FarthestFromSurface(
                run.mesh, cut, [&](const support::Point& p) { return tools.SignedDistance(p, 1); }),
            tolerance);
  const std::vector<support::Point> points = tools.SurfacePoints(low, high, 0.61);
  ASSERT_FALSE(points.empty());
  EXPECT_LE(support::FarthestFromMesh(points, run.mesh), tolerance);
}

}  // namespace sweep_test

// Outlines of random meshes against what upright lines find, facet by facet, and moved and scaled.

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

#include "OutlineRun.h"
#include "RasterWitness.h"
#include "support/geometry/MeshChecks.h"

namespace outline_test {
namespace {

using Place = std::array<double, 3>;

class Random {
 public:
  explicit Random(unsigned seed) : m_engine(seed) {}
  double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine()) * 0x1p-32);
  }

 private:
  std::mt19937 m_engine;
};

formats::Mesh Jittered(formats::Mesh mesh, double by, Random& random) {
  for (auto& vertex : mesh.vertices) {
    for (double& coordinate : vertex) coordinate += random.Between(-by, by);
  }
  return mesh;
}

// About the x axis first, then about z.
formats::Mesh Rotated(const formats::Mesh& mesh, double aboutX, double aboutZ) {
  const double cx = std::cos(aboutX), sx = std::sin(aboutX);
  const double cz = std::cos(aboutZ), sz = std::sin(aboutZ);
  return Mapped(mesh, [=](const Place& v) {
    const Place turned = {v[0], cx * v[1] - sx * v[2], sx * v[1] + cx * v[2]};
    return Place{cz * turned[0] - sz * turned[1], sz * turned[0] + cz * turned[1], turned[2]};
  });
}

// Closed bodies that pass through each other, through the x axis, or by it.
formats::Mesh Bodies(unsigned seed) {
  Random random(seed);
  const auto turned = [&](const formats::Mesh& mesh) {
    return Rotated(mesh, random.Between(0, 6), random.Between(0, 6));
  };
  formats::Mesh mesh = Jittered(turned(Torus(6, 2, 24, 12)), 0.2, random);
  Add(mesh, Moved(Jittered(turned(Ball(3, 16)), 0.3, random), 1, {4, random.Between(-6, 6), 1}));
  for (int i = 0; i < 3; ++i) {
    const Place to = {random.Between(-5, 5), random.Between(-5, 5), random.Between(-5, 5)};
    Add(mesh, Moved(turned(support::Box({-3, -1, -0.5}, {3, 1, 0.5}, 1)), 1, to));
  }
  return mesh;
}

formats::Mesh Facets(unsigned seed) {
  Random random(seed);
  formats::Mesh mesh;
  for (int i = 0; i < 20; ++i) {
    for (int k = 0; k < 3; ++k) {
      mesh.vertices.push_back(
          {random.Between(-7, 7), random.Between(-7, 7), random.Between(-7, 7)});
    }
    mesh.facets.push_back({{3 * i, 3 * i + 1, 3 * i + 2}, 1});
  }
  return mesh;
}

using MakeMesh = formats::Mesh (*)(unsigned);

class RandomMeshes : public testing::TestWithParam<MakeMesh> {
 protected:
  bool IsClosed() const { return GetParam() == Bodies; }
};

TEST_P(RandomMeshes, ShadowIsWhatUprightLinesFind) {
  for (unsigned seed = 0; seed < 8; ++seed) {
    SCOPED_TRACE(seed);
    const formats::Mesh mesh = GetParam()(seed);
    const SilhouetteResult run = RunSilhouette(mesh);
    ExpectSilent(run.dialog);
    const auto [low, high] = WidthOf(mesh);
    const RasterAreas areas =
        CompareAreas(low, high, 500, run.curves, [&](double x) { return ShadowAt(mesh, x); });
    EXPECT_LE(areas.difference, 1e-10 * areas.witness);
    EXPECT_NEAR(Area(run.curves), areas.witness, 0.002 * areas.witness);
  }
}

TEST_P(RandomMeshes, SpunOutlineIsWhatUprightLinesFind) {
  for (unsigned seed = 0; seed < 8; ++seed) {
    SCOPED_TRACE(seed);
    const formats::Mesh mesh = GetParam()(seed);
    const double distance = 1e-3;
    const SpinResult run = RunSpin(mesh, distance);
    ExpectSilent(run.dialog);
    const auto [low, high] = WidthOf(mesh);
    const RasterAreas areas = CompareAreas(low, high, 500, run.curves,
                                           [&](double x) { return SpunAt(mesh, x, IsClosed()); });
    EXPECT_LE(areas.difference, distance * LengthOf(run.curves));
    EXPECT_NEAR(Area(run.curves), areas.witness, 0.002 * areas.witness);
  }
}

// How far the two are from each other at their points.
double Apart(const Curves& a, const Curves& b) {
  double most = 0;
  for (const auto& [from, to] : {std::pair(&a, &b), std::pair(&b, &a)}) {
    for (const Curve& curve : from->curves) {
      for (const Point& point : curve) most = std::max(most, DistanceTo(*to, point));
    }
  }
  return most;
}

Curves MovedCurves(Curves curves, double factor, const Point& by) {
  for (Curve& curve : curves.curves) {
    for (Point& point : curve) point = {factor * point.x + by.x, factor * point.y + by.y};
  }
  return curves;
}

constexpr double kUlp = 0x1p-52;

TEST_P(RandomMeshes, ShadowMovesAndScalesWithTheMesh) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    const formats::Mesh mesh = GetParam()(seed);
    const SilhouetteResult here = RunSilhouette(mesh);
    for (const double factor : {1e-3, 1.0, 1e3}) {
      const Place by = {5000 * factor, -7000 * factor, 3000};
      const SilhouetteResult there = RunSilhouette(Moved(mesh, factor, by));
      const double within = factor * (1e-9 * DiagonalOf(mesh) + 16 * 7020 * kUlp);
      EXPECT_LE(Apart(there.curves, MovedCurves(here.curves, factor, {by[0], by[1]})), within)
          << factor;
    }
  }
}

// With a little more than the tolerance in force: the pieces of an arc do not depend on the frame
// but for rounding, so that in fact far less is seen.
TEST_P(RandomMeshes, SpunOutlineMovesAlongTheAxisAndScalesWithTheMesh) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    const formats::Mesh mesh = GetParam()(seed);
    const double distance = 1e-3;
    const SpinResult here = RunSpin(mesh, distance);
    for (const double factor : {1e-3, 1.0, 1e3}) {
      const Place by = {5000 * factor, 0, 0};
      const SpinResult there = RunSpin(Moved(mesh, factor, by), factor * distance);
      const double within = factor * (1e-9 * DiagonalOf(mesh) + 16 * 5020 * kUlp + distance);
      EXPECT_LE(Apart(there.curves, MovedCurves(here.curves, factor, {by[0], by[1]})), within)
          << factor;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Outlines, RandomMeshes, testing::Values(&Bodies, &Facets),
                         [](const auto& mesh) { return mesh.index == 0 ? "Bodies" : "Facets"; });

}  // namespace
}  // namespace outline_test

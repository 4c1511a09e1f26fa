// Distances and sides, against a witness that looks at every facet and sums solid angles.

#include <gtest/gtest.h>
#include <random>

#include "Solids.h"
#include "kernel/compare/MeasureDeviations.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/PlainDeviation.h"

namespace compare_test {
namespace {

using support::Point;

kernel::StockMesh MeshOf(const formats::Mesh& given) {
  kernel::StockMesh mesh;
  for (const auto& p : given.vertices) mesh.vertices.push_back({p[0], p[1], p[2]});
  for (const formats::Facet& facet : given.facets) {
    const auto& v = facet.vertices;
    mesh.facets.push_back({{static_cast<std::uint32_t>(v[0]), static_cast<std::uint32_t>(v[1]),
                            static_cast<std::uint32_t>(v[2])},
                           facet.colour});
  }
  return mesh;
}

kernel::StockTree TreeOf(const formats::Mesh& mesh) {
  return kernel::StockTree(MeshOf(mesh), [](double) {});
}

// Points about a mesh: half of them in its box and around it, half close to its surface.
class RandomPoints {
 public:
  explicit RandomPoints(const formats::Mesh& mesh) : m_mesh(mesh), m_low(mesh.vertices[0]) {
    m_high = m_low;
    for (const Point& vertex : mesh.vertices) {
      for (std::size_t k = 0; k < 3; ++k) {
        m_low[k] = std::min(m_low[k], vertex[k]);
        m_high[k] = std::max(m_high[k], vertex[k]);
      }
    }
  }

  double Diagonal() const { return support::Length(support::Minus(m_high, m_low)); }

  std::vector<kernel::Vec3> Make(int count) {
    std::vector<kernel::Vec3> points;
    for (int i = 0; i < count; ++i) points.push_back(i % 2 == 0 ? Around() : Close());
    return points;
  }

 private:
  // The raw numbers, as the library's distributions differ from system to system.
  double Share() { return static_cast<double>(m_random() >> 11) * 0x1p-53; }

  kernel::Vec3 Around() {
    kernel::Vec3 point;
    for (int k = 0; k < 3; ++k) {
      const auto i = static_cast<std::size_t>(k);
      point[k] = m_low[i] + (1.4 * Share() - 0.2) * (m_high[i] - m_low[i]);
    }
    return point;
  }

  kernel::Vec3 Close() {
    const auto facet =
        static_cast<std::size_t>(Share() * static_cast<double>(m_mesh.facets.size()));
    const auto [a, b, c] = support::Corners(m_mesh, m_mesh.facets[facet]);
    Point at = support::Plus(a, support::Minus(b, a), Share());
    at = support::Plus(at, support::Minus(c, at), Share());
    const double reach = std::pow(10, -6 * Share()) * 0.1 * Diagonal();
    kernel::Vec3 point;
    for (int k = 0; k < 3; ++k) {
      point[k] = at[static_cast<std::size_t>(k)] + (Share() - 0.5) * reach;
    }
    return point;
  }

  const formats::Mesh& m_mesh;
  Point m_low, m_high;
  std::mt19937_64 m_random{7};
};

void ExpectLikeTheWitness(const formats::Mesh& mesh) {
  ASSERT_EQ(support::ClosedFault(mesh), "");
  RandomPoints random(mesh);
  const std::vector<kernel::Vec3> points = random.Make(1000);
  const std::vector<kernel::Deviation> found =
      MeasureDeviations(TreeOf(mesh), points, [](double) {});
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double expected = support::PlainDeviation(mesh, {points[i].x, points[i].y, points[i].z});
    EXPECT_NEAR(found[i].value, expected, 1e-9 * random.Diagonal())
        << points[i].x << ", " << points[i].y << ", " << points[i].z;
  }
}

TEST(CompareDistances, OfATorusAreTheWitness) { ExpectLikeTheWitness(Torus(60, 40)); }

TEST(CompareDistances, OfAPittedBlockFarFromTheOriginAreTheWitness) {
  ExpectLikeTheWitness(Moved(PittedBlock(3, 20), 1, {1e5, -2e5, 3e4}));
}

// Sharp and blunt edges, needles, sheets close to each other, bodies of very different sizes.
TEST(CompareDistances, OfNeedlesAndSheetsAreTheWitness) {
  formats::Mesh mesh = Spike(0.05);
  Add(mesh, Moved(Wedge(0.01), 1, {-4, 3, 2}));
  Add(mesh, Moved(Torus(24, 16), 0.3, {5, 0, 5}));
  Add(mesh, support::Box({-8, -8, -1}, {8, 8, -0.999}, 1));
  ExpectLikeTheWitness(mesh);
}

void ExpectInside(const kernel::StockTree& tree, const kernel::Vec3& point, bool inside) {
  EXPECT_EQ(tree.IsInside(point), inside) << point.x << ", " << point.y << ", " << point.z;
}

TEST(CompareSides, AreRightAtTheCornersAndEdgesOfACube) {
  const kernel::StockTree cube = TreeOf(support::Box({0, 0, 0}, {4, 4, 4}, 1));
  for (const double step : {1e-1, 1e-6, 1e-12}) {
    for (int corner = 0; corner < 8; ++corner) {
      const auto at = [&](double outwards) {
        kernel::Vec3 point;
        for (int k = 0; k < 3; ++k) point[k] = (corner >> k & 1) != 0 ? 4 + outwards : -outwards;
        return point;
      };
      ExpectInside(cube, at(-step), true);
      ExpectInside(cube, at(step), false);
      // Outside by one side alone, straight beyond an edge or a face.
      for (int k = 0; k < 3; ++k) {
        kernel::Vec3 point = at(-step);
        point[k] = at(step)[k];
        ExpectInside(cube, point, false);
      }
    }
  }
}

TEST(CompareSides, AreRightInThePlanesAndOnTheLinesOfTheEdges) {
  const kernel::StockTree cube = TreeOf(support::Box({0, 0, 0}, {4, 4, 4}, 1));
  for (const double beyond : {-3.0, -1e-9, 4 + 1e-9, 9.0}) {
    ExpectInside(cube, {beyond, 0, 0}, false);
    ExpectInside(cube, {4, beyond, 4}, false);
    ExpectInside(cube, {beyond, 2, 4}, false);
    ExpectInside(cube, {1, beyond, 1}, false);
  }
  // On the diagonals of the faces, along which two facets meet.
  for (const double z : {1e-9, 1.0, 3.0}) ExpectInside(cube, {2, 2, z}, true);
}

TEST(CompareSides, AreRightAtTheEdgeOfAThinWedge) {
  for (const double halfWidth : {0.1, 1e-4}) {
    const kernel::StockTree wedge = TreeOf(Wedge(halfWidth));
    for (const double x : {1e-3, 0.1, 5.0}) {
      const double y = halfWidth * x / 10;
      for (const double z : {1e-9, 2.5, 5 - 1e-9}) {
        ExpectInside(wedge, {x, 0, z}, true);
        ExpectInside(wedge, {x, 0.999 * y, z}, true);
        ExpectInside(wedge, {x, -1.001 * y, z}, false);
        ExpectInside(wedge, {-x, 0, z}, false);
        ExpectInside(wedge, {-x, y, z}, false);
      }
    }
  }
}

TEST(CompareSides, AreRightAtTheTipOfASpike) {
  for (const double halfWidth : {0.1, 1e-4}) {
    const kernel::StockTree spike = TreeOf(Spike(halfWidth));
    for (const double down : {1e-6, 1e-3, 1.0}) {
      const double half = halfWidth * down / 10;
      ExpectInside(spike, {0, 0, 10 - down}, true);
      ExpectInside(spike, {0.99 * half, -0.99 * half, 10 - down}, true);
      ExpectInside(spike, {1.01 * half, 0, 10 - down}, false);
      ExpectInside(spike, {1.01 * half, 1.01 * half, 10 - down}, false);
      ExpectInside(spike, {0, 0, 10 + down}, false);
      ExpectInside(spike, {2 * half, 0, 10 + down}, false);
    }
  }
}

TEST(CompareSides, FollowVoidsAndBodiesInVoids) {
  formats::Mesh mesh = support::Box({0, 0, 0}, {9, 9, 9}, 1);
  Add(mesh, Reversed(support::Box({1, 1, 1}, {8, 8, 8}, 1)));
  Add(mesh, support::Box({3, 3, 3}, {6, 6, 6}, 1));
  const kernel::StockTree nested = TreeOf(mesh);
  ExpectInside(nested, {0.5, 4.5, 4.5}, true);
  ExpectInside(nested, {2, 4.5, 4.5}, false);
  ExpectInside(nested, {4.5, 4.5, 4.5}, true);
  ExpectInside(nested, {4.5, 7, 4.5}, false);
}

TEST(CompareSides, FollowBodiesThatTouchAndOverlap) {
  formats::Mesh mesh = support::Box({0, 0, 0}, {4, 4, 4}, 1);
  Add(mesh, support::Box({4, 0, 0}, {8, 4, 4}, 1));    // a common face
  Add(mesh, support::Box({7, 1, 1}, {12, 3, 3}, 1));   // runs into the second
  Add(mesh, support::Box({12, 3, 3}, {14, 5, 5}, 1));  // a common corner
  const kernel::StockTree bodies = TreeOf(mesh);
  for (const double x : {3.9, 4.1, 7.5, 11.0}) ExpectInside(bodies, {x, 2, 2}, true);
  ExpectInside(bodies, {13, 4, 4}, true);
  ExpectInside(bodies, {12.5, 2, 2}, false);
  ExpectInside(bodies, {9, 3.5, 2}, false);
  ExpectInside(bodies, {12 - 1e-9, 3 + 1e-9, 3 + 1e-9}, false);
}

}  // namespace
}  // namespace compare_test

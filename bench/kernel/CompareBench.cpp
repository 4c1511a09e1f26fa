// kernel_compare_bench: the distances and sides of 400,000 facet centres of a part to a stock of
// 280,000 facets, against CGAL's tree of boxes, which looks for the closest points alone; the same
// points, the same number of threads, five times each, best time. The further the part lies from
// the stock, in facets, the more of them are nearly as near as the nearest: parts that lie within a
// facet's ripples, 5 and 10 off, facets being about 1 long. Then what making the trees takes, the
// most memory that is held, and how far the distances differ.

#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/AABB_triangle_primitive.h>
#include <CGAL/Simple_cartesian.h>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <string>

#include "BestOfFive.h"
#include "kernel/common/Workers.h"
#include "kernel/compare/MeasureDeviations.h"

namespace {

using Cgal = CGAL::Simple_cartesian<double>;
using CgalTriangles = std::vector<Cgal::Triangle_3>;
using CgalTree = CGAL::AABB_tree<
    CGAL::AABB_traits<Cgal, CGAL::AABB_triangle_primitive<Cgal, CgalTriangles::const_iterator>>>;

// A torus of radii 100 and `inner` whose surface has ripples, two facets a cell.
kernel::StockMesh Torus(int round, int across, double inner, double ripple) {
  kernel::StockMesh mesh;
  for (int i = 0; i < round; ++i) {
    const double u = 2 * std::numbers::pi * i / round;
    for (int j = 0; j < across; ++j) {
      const double v = 2 * std::numbers::pi * j / across;
      const double own = inner + ripple * std::sin(40 * u) * std::cos(24 * v);
      const double r = 100 + own * std::cos(v);
      mesh.vertices.push_back({r * std::cos(u), r * std::sin(u), own * std::sin(v)});
    }
  }
  const auto at = [&](int i, int j) {
    return static_cast<std::uint32_t>(i % round * across + j % across);
  };
  for (int i = 0; i < round; ++i) {
    for (int j = 0; j < across; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 2});
    }
  }
  return mesh;
}

kernel::StockMesh Stock() { return Torus(500, 280, 40, 0.05); }
kernel::StockMesh Part(double off) { return Torus(640, 312, 40 - off, 0); }

std::vector<kernel::Vec3> Centres(const kernel::StockMesh& mesh) {
  std::vector<kernel::Vec3> centres;
  for (const kernel::StockMesh::Facet& facet : mesh.facets) {
    const auto& [a, b, c] = facet.vertices;
    centres.push_back((mesh.vertices[a] + mesh.vertices[b] + mesh.vertices[c]) / 3);
  }
  return centres;
}

kernel::StockTree TreeOf(const kernel::StockMesh& stock) {
  return kernel::StockTree(stock, [](double) {});
}

CgalTriangles TrianglesOf(const kernel::StockMesh& mesh) {
  CgalTriangles triangles;
  for (const kernel::StockMesh::Facet& facet : mesh.facets) {
    const auto point = [&](std::size_t i) {
      const kernel::Vec3& v = mesh.vertices[facet.vertices[i]];
      return Cgal::Point_3(v.x, v.y, v.z);
    };
    triangles.emplace_back(point(0), point(1), point(2));
  }
  return triangles;
}

void Build(CgalTree& tree) {
  tree.build();
  tree.accelerate_distance_queries();
}

std::vector<double> CgalDistances(const CgalTree& tree, const std::vector<kernel::Vec3>& points) {
  std::vector<double> distances(points.size());
  constexpr std::size_t kBlock = 1024;
  kernel::RunTasks((points.size() + kBlock - 1) / kBlock,
                   [&](std::size_t block) {
                     const std::size_t end = std::min(points.size(), (block + 1) * kBlock);
                     for (std::size_t i = block * kBlock; i < end; ++i) {
                       const Cgal::Point_3 from(points[i].x, points[i].y, points[i].z);
                       distances[i] =
                           std::sqrt(CGAL::squared_distance(from, tree.closest_point(from)));
                     }
                   },
                   [](std::size_t) {});
  return distances;
}

double Milliseconds(const std::function<void()>& work) {
  double best = std::numeric_limits<double>::infinity();
  for (int i = 0; i < 5; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const auto end = std::chrono::steady_clock::now();
    best = std::min(best, std::chrono::duration<double, std::milli>(end - start).count());
  }
  return best;
}

// One part's points, and what both trees make of them.
struct Comparison {
  std::string ours, theirs;  // names of the runs
  std::vector<kernel::Vec3> points;
  std::vector<kernel::Deviation> deviations;
  std::vector<double> distances;

  explicit Comparison(const char* off)
      : ours(std::string("DistancesAndSides/") + off),
        theirs(std::string("CgalClosestPoints/") + off),
        points(Centres(Part(std::atof(off)))) {}

  void AddTo(BestOfFive& bench, const kernel::StockTree& tree, const CgalTree& cgal) {
    bench.Add(ours, [&] {
      deviations = MeasureDeviations(tree, points, [](double) {});
      return true;
    });
    bench.Add(theirs, [&] {
      distances = CgalDistances(cgal, points);
      return true;
    });
  }

  void Print(const BestOfFive& bench) const {
    if (deviations.empty() || distances.empty()) return;
    bench.PrintRatio(theirs, ours, "3 or more");
    double worst = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
      worst = std::max(worst, std::abs(std::abs(deviations[i].value) - distances[i]));
    }
    const double queries = 1e-6 * static_cast<double>(points.size());
    std::printf("  processor time a query: %.2f and %.2f us; distances differ by %.1e at most\n",
                bench.ProcessorTime(theirs) / queries, bench.ProcessorTime(ours) / queries, worst);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const double inputs =
      PeakMebibytes([] { return !Centres(Part(5)).empty() && !Stock().facets.empty(); });
  const double peak = PeakMebibytes([] {
    const kernel::StockMesh stock = Stock();
    return !MeasureDeviations(TreeOf(stock), Centres(Part(5)), [](double) {}).empty();
  });

  const kernel::StockMesh stock = Stock();
  const CgalTriangles triangles = TrianglesOf(stock);
  const kernel::StockTree tree = TreeOf(stock);
  CgalTree cgal(triangles.begin(), triangles.end());
  Build(cgal);

  BestOfFive bench;
  std::array<Comparison, 3> comparisons = {Comparison("0"), Comparison("5"), Comparison("10")};
  for (Comparison& comparison : comparisons) comparison.AddTo(bench, tree, cgal);
  if (!bench.Run(argc, argv)) return EXIT_FAILURE;
  std::printf("%zu points, %zu facets, %u threads\n", comparisons[0].points.size(),
              stock.facets.size(), kernel::WorkerCount());
  for (const Comparison& comparison : comparisons) comparison.Print(bench);
  std::printf("making the tree: %.0f ms, CGAL's: %.0f ms\n", Milliseconds([&] { TreeOf(stock); }),
              Milliseconds([&] {
                CgalTree other(triangles.begin(), triangles.end());
                Build(other);
              }));
  std::printf("held at most: %.0f MiB, the meshes alone %.0f MiB\n", peak, inputs);
  return EXIT_SUCCESS;
}

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_mesh_processing/triangulate_hole.h>
#include <iterator>

#include "kernel/heal/CgalMesh.h"
#include "kernel/heal/TriangulateLoop.h"

namespace kernel {
namespace {

using Point = CgalPoint;

// What the library returns a triangle as.
struct Triangle {
  Triangle(int a, int b, int c)
      : places{static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b),
               static_cast<std::uint32_t>(c)} {}
  std::array<std::uint32_t, 3> places;
};

}  // namespace

LoopTriangles TriangulateLongLoop(const std::vector<Vec3>& points) {
  const std::unique_lock turn = CgalTurn();
  std::vector<Point> loop;
  loop.reserve(points.size());
  for (const Vec3& point : points) loop.emplace_back(point.x, point.y, point.z);
  std::vector<Triangle> found;
  CGAL::Polygon_mesh_processing::triangulate_hole_polyline(
      loop, std::back_inserter(found),
      CGAL::parameters::use_delaunay_triangulation(true).use_2d_constrained_delaunay_triangulation(
          false));
  LoopTriangles triangles;
  for (const Triangle& triangle : found) triangles.push_back(triangle.places);
  return triangles;
}

}  // namespace kernel

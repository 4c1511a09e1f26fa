#include "kernel/sweep/StockRaster.h"

#include <algorithm>
#include <cmath>

#include "kernel/sweep/ExactOrientation.h"

namespace kernel {
namespace {

struct Crossing {
  std::size_t ray;
  double at;
  int step;  // what it adds to the winding number
  std::uint32_t facet;
};

class FamilyRaster {
 public:
  FamilyRaster(const StockMesh& mesh, int axis, const DexelLattice& lattice)
      : m_mesh(mesh), m_lattice(lattice), m_axis(axis), m_u((axis + 1) % 3), m_v((axis + 2) % 3) {}

  std::vector<Crossing> Crossings() {
    for (std::size_t f = 0; f < m_mesh.facets.size(); ++f) AddFacet(f);
    std::sort(m_crossings.begin(), m_crossings.end(), [](const Crossing& a, const Crossing& b) {
      if (a.ray != b.ray) return a.ray < b.ray;
      if (a.at != b.at) return a.at < b.at;
      if (a.step != b.step) return a.step > b.step;
      return a.facet < b.facet;
    });
    return std::move(m_crossings);
  }

 private:
  Point2 Flat(const Vec3& p) const { return {p[m_u], p[m_v]}; }

  void AddFacet(std::size_t f) {
    const auto& numbers = m_mesh.facets[f].vertices;
    const std::array<Vec3, 3> corner = {m_mesh.vertices[numbers[0]], m_mesh.vertices[numbers[1]],
                                        m_mesh.vertices[numbers[2]]};
    Box3 box;
    for (const Vec3& p : corner) box.Include(p);
    const int firstU = m_lattice.FirstNodeFrom(m_u, box.low[m_u]);
    const int firstV = m_lattice.FirstNodeFrom(m_v, box.low[m_v]);
    const int endU = m_lattice.FirstNodeFrom(m_u, box.high[m_u]) + 1;
    const int endV = m_lattice.FirstNodeFrom(m_v, box.high[m_v]) + 1;
    const std::array<Point2, 3> flat = {Flat(corner[0]), Flat(corner[1]), Flat(corner[2])};
    const int turn = OrientationSign(flat[0], flat[1], flat[2]);
    if (turn == 0) return;
    const Vec3 normal = Cross(corner[1] - corner[0], corner[2] - corner[0]);
    for (int j = firstV; j < std::min(endV, m_lattice.Nodes(m_v)); ++j) {
      for (int i = firstU; i < std::min(endU, m_lattice.Nodes(m_u)); ++i) {
        const Point2 point{m_lattice.Coordinate(m_u, i), m_lattice.Coordinate(m_v, j)};
        if (ShiftedOrientationSign(flat[0], flat[1], point) != turn ||
            ShiftedOrientationSign(flat[1], flat[2], point) != turn ||
            ShiftedOrientationSign(flat[2], flat[0], point) != turn) {
          continue;
        }
        double at = corner[0][m_axis];
        if (normal[m_axis] != 0) {
          at -= (normal[m_u] * (point.x - corner[0][m_u]) +
                 normal[m_v] * (point.y - corner[0][m_v])) /
                normal[m_axis];
        }
        // On a facet nearly parallel to the ray the division magnifies rounding.
        at = std::clamp(at, box.low[m_axis], box.high[m_axis]);
        m_crossings.push_back(
            {m_lattice.RayIndex(m_axis, i, j), at, -turn, static_cast<std::uint32_t>(f)});
      }
    }
  }

  const StockMesh& m_mesh;
  const DexelLattice& m_lattice;
  int m_axis, m_u, m_v;
  std::vector<Crossing> m_crossings;
};

void Append(DexelRay& ray, const Crossing& enter, const Crossing& leave, double sliver) {
  const Generator last = Generator::StockFacet(leave.facet);
  if (leave.at - enter.at <= sliver) return;
  if (!ray.empty() && enter.at - ray.back().high <= sliver) {
    ray.back().high = leave.at;
    ray.back().highMaker = last;
    return;
  }
  ray.push_back({enter.at, leave.at, Generator::StockFacet(enter.facet), last});
}

}  // namespace

bool RasteriseStock(const StockMesh& mesh, int axis, DexelModel& model) {
  const std::vector<Crossing> crossings = FamilyRaster(mesh, axis, model.Lattice()).Crossings();
  std::vector<DexelRay>& rays = model.Rays(axis);
  int winding = 0;
  bool overlapping = false;
  const Crossing* enter = nullptr;
  for (const Crossing& crossing : crossings) {
    const int before = winding;
    winding += crossing.step;
    overlapping = overlapping || winding > 1 || winding < 0;
    if (before <= 0 && winding > 0) enter = &crossing;
    if (before > 0 && winding <= 0) Append(rays[crossing.ray], *enter, crossing, model.Sliver());
  }
  return overlapping;
}

}  // namespace kernel

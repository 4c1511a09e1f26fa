#include "kernel/sweep/Contour.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/Workers.h"
#include "kernel/sweep/CellVertices.h"

namespace kernel {
namespace {

constexpr std::size_t kChunk = 4096;

// A polygon of four cells' vertices and up to four on the joints between them.
struct Polygon {
  std::array<std::uint32_t, 8> vertices{};
  std::size_t count = 0;
  std::size_t firstJoint = 8;  // its place in `vertices`

  void Add(std::uint32_t vertex) { vertices[count++] = vertex; }
  std::uint32_t At(std::size_t i) const { return vertices[i % count]; }
};

class ChunkOfFacets {
 public:
  ChunkOfFacets(const SurfaceCells& cells, const CellVertices& vertices,
                const SurfaceMakers& makers)
      : m_cells(cells), m_vertices(vertices), m_makers(makers) {}

  std::vector<CutMesh::Facet> Build(std::size_t begin, std::size_t end) {
    for (std::size_t number = begin; number < end; ++number) AddCell(number);
    return std::move(m_facets);
  }

 private:
  // Each crossed edge of the lattice starts at corner 0 of one cell, which sees to it.
  void AddCell(std::size_t number) {
    const SurfaceCells::Cell& cell = m_cells.At(number);
    const unsigned signs = m_cells.SignsOf(cell);
    for (int axis = 0; axis < 3; ++axis) {
      const bool solidBelow = (signs & 1U) != 0;
      const bool solidAbove = (signs >> (1 << axis) & 1U) != 0;
      if (solidBelow == solidAbove) continue;
      const SurfaceCrossing crossing = m_vertices.CrossingOn(cell, signs, EdgeNumber(axis, 0, 0));
      Polygon polygon = AroundEdge(cell, axis);
      if (!solidBelow) Reverse(polygon);
      Split(polygon, crossing);
    }
  }

  // Counter-clockwise seen from the edge's upper end.
  Polygon AroundEdge(const SurfaceCells::Cell& cell, int axis) const {
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    constexpr std::array<std::array<int, 2>, 4> kBack = {{{1, 1}, {0, 1}, {0, 0}, {1, 0}}};
    std::array<std::size_t, 4> around{};
    std::array<int, 4> edges{};
    for (std::size_t i = 0; i < 4; ++i) {
      std::array<int, 3> at = {cell.i, cell.j, cell.k};
      at[static_cast<std::size_t>(u)] -= kBack[i][0];
      at[static_cast<std::size_t>(v)] -= kBack[i][1];
      around[i] = m_cells.NumberOf(at[0], at[1], at[2]);
      edges[i] = EdgeNumber(axis, kBack[i][0], kBack[i][1]);
    }
    Polygon polygon;
    for (std::size_t i = 0; i < 4; ++i) {
      polygon.Add(m_vertices.OfLoop(around[i], edges[i]));
      // The face to the next cell lies across u or v in turn; its lower cell keeps the joint.
      const std::size_t next = (i + 1) % 4;
      const int across = i % 2 == 0 ? u : v;
      const std::size_t lower = i < 2 ? i : next;
      const std::uint32_t joint = m_vertices.OnJoint(around[lower], across, edges[lower]);
      if (joint == CellVertices::kNone) continue;
      if (polygon.firstJoint == 8) polygon.firstJoint = polygon.count;
      polygon.Add(joint);
    }
    return polygon;
  }

  static void Reverse(Polygon& polygon) {
    std::reverse(polygon.vertices.begin(),
                 polygon.vertices.begin() + static_cast<std::ptrdiff_t>(polygon.count));
    if (polygon.firstJoint != 8) polygon.firstJoint = polygon.count - 1 - polygon.firstJoint;
  }

  void Split(const Polygon& polygon, const SurfaceCrossing& crossing) {
    const std::uint8_t colour = m_makers.ColourOf(crossing.maker);
    // A joint's vertex belongs to two polygons only, so no other one has a diagonal from it; a
    // diagonal between two cells that share an ambiguous face could be there twice.
    const std::size_t apex =
        polygon.firstJoint != 8 ? polygon.firstJoint : BetterDiagonal(polygon, crossing.tangent);
    for (std::size_t i = 1; i + 1 < polygon.count; ++i) {
      m_facets.push_back(
          {{polygon.At(apex), polygon.At(apex + i), polygon.At(apex + i + 1)}, colour});
    }
  }

  const Vec3& Position(const Polygon& polygon, std::size_t i) const {
    return m_vertices.Positions()[polygon.At(i)];
  }

  // How far the two facets of the diagonal from vertex `apex` are from fitting the crossing: their
  // distance from it, and far more when one of them faces the wrong way.
  double Misfit(const Polygon& polygon, std::size_t apex, const TangentPlane& tangent) const {
    const Vec3& a = Position(polygon, apex);
    const Vec3& b = Position(polygon, apex + 1);
    const Vec3& c = Position(polygon, apex + 2);
    const Vec3& d = Position(polygon, apex + 3);
    const double away = std::abs(Dot(tangent.normal, (a + c) / 2 - tangent.point));
    const double length = Length(c - a) + Length(d - b);
    const Vec3 first = Cross(b - a, c - a);
    const Vec3 second = Cross(c - a, d - a);
    // Heights of the two facets above the diagonal, negative when they face the wrong way.
    const double least = std::min(Dot(first, tangent.normal), Dot(second, tangent.normal)) /
                         (Length(c - a) + 1e-300);
    return away + (least < 1e-3 * length ? length - least : 0);
  }

  std::size_t BetterDiagonal(const Polygon& polygon, const TangentPlane& tangent) const {
    const double even = Misfit(polygon, 0, tangent);
    const double odd = Misfit(polygon, 1, tangent);
    // Rounding must not decide on flat ground.
    return odd < even * (1 - 1e-6) - 1e-300 ? 1 : 0;
  }

  const SurfaceCells& m_cells;
  const CellVertices& m_vertices;
  const SurfaceMakers& m_makers;
  std::vector<CutMesh::Facet> m_facets;
};

}  // namespace

CutMesh ContourCells(const LatticeCrossings& crossings, const SurfaceCells& cells,
                     const SurfaceMakers& makers, const std::function<void(double)>& watch) {
  CellVertices vertices(crossings, cells, makers);
  vertices.Place([&](double share) { watch(0.7 * share); });
  const std::size_t count = (cells.Count() + kChunk - 1) / kChunk;
  std::vector<std::vector<CutMesh::Facet>> chunks(count);
  RunTasks(
      count,
      [&](std::size_t i) {
        chunks[i] = ChunkOfFacets(cells, vertices, makers)
                        .Build(i * kChunk, std::min(cells.Count(), (i + 1) * kChunk));
      },
      [&](std::size_t done) {
        watch(0.7 + 0.3 * static_cast<double>(done) / static_cast<double>(count));
      });
  CutMesh mesh;
  mesh.vertices = vertices.Positions();
  for (const std::vector<CutMesh::Facet>& chunk : chunks) {
    mesh.facets.insert(mesh.facets.end(), chunk.begin(), chunk.end());
  }
  return mesh;
}

}  // namespace kernel

#include "kernel/heal/SplitOpenSides.h"

#include <algorithm>
#include <utility>

#include "kernel/heal/PointTree.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;
using Stop = std::pair<double, Index>;  // place along the side, 0 to 1, and vertex

std::vector<Stop> StopsAlong(const SurfaceMesh& mesh, Index side, const PointTree& tree,
                             double tolerance) {
  const Vec3& from = mesh.vertices[mesh.Origin(side)];
  const Vec3& to = mesh.vertices[mesh.Target(side)];
  const Vec3 along = to - from;
  const double squared = LengthSquared(along);
  std::vector<Stop> stops;
  Box3 box;
  box.Include(from);
  box.Include(to);
  tree.ForEachWithin(box.Grown(tolerance), [&](const PointTree::Point& point) {
    if (mesh.facets[side / 3].Has(point.number)) return;
    const double t = Dot(point.place - from, along) / squared;
    if (!(t > 0 && t < 1) || Length(point.place - from) < tolerance ||
        Length(point.place - to) < tolerance) {
      return;
    }
    if (Length(point.place - (from + t * along)) < tolerance) stops.emplace_back(t, point.number);
  });
  std::sort(stops.begin(), stops.end());
  return stops;
}

// The facets that take the place of the one at `side`, empty when one of them would be no facet.
std::vector<SurfaceMesh::Facet> Pieces(const SurfaceMesh& mesh, Index side,
                                       const std::vector<Stop>& stops, double least) {
  const SurfaceMesh::Facet& whole = mesh.facets[side / 3];
  const Vec3 normal = mesh.Normal(whole);
  const Index apex = mesh.Origin(SurfaceMesh::Previous(side));
  std::vector<SurfaceMesh::Facet> pieces;
  Index from = mesh.Origin(side);
  for (std::size_t i = 0; i <= stops.size(); ++i) {
    const Index to = i < stops.size() ? stops[i].second : mesh.Target(side);
    const SurfaceMesh::Facet piece{{from, to, apex}, whole.colour};
    if (mesh.Height(piece) < least || Dot(mesh.Normal(piece), normal) <= 0) return {};
    pieces.push_back(piece);
    from = to;
  }
  return pieces;
}

}  // namespace

bool SplitOpenSides(SurfaceMesh& mesh, const MeshEdges& edges, const Reach& reach, double least) {
  std::vector<Index> sides = OpenSides(edges);
  std::erase_if(sides, [&](Index side) {
    return !reach.Holds(mesh.Origin(side)) || !reach.Holds(mesh.Target(side));
  });
  std::vector<PointTree::Point> points;
  for (const Index v : VerticesOf(mesh, sides)) points.push_back({mesh.vertices[v], v});
  const PointTree tree(std::move(points));
  std::sort(sides.begin(), sides.end());
  bool any = false;
  Index last = SurfaceMesh::kNone;  // a facet is split at one side at a time
  for (const Index side : sides) {
    if (side / 3 == last) continue;
    reach.check();
    std::vector<Stop> stops = StopsAlong(mesh, side, tree, reach.tolerance);
    if (stops.empty()) continue;
    std::vector<SurfaceMesh::Facet> pieces = Pieces(mesh, side, stops, least);
    // One stop that fits is better than none: the others may fit when the sides are looked at next.
    for (std::size_t i = 0; pieces.empty() && stops.size() > 1 && i < stops.size(); ++i) {
      pieces = Pieces(mesh, side, {stops[i]}, least);
    }
    if (pieces.empty()) continue;
    mesh.facets[side / 3] = pieces[0];
    mesh.facets.insert(mesh.facets.end(), pieces.begin() + 1, pieces.end());
    last = side / 3;
    any = true;
  }
  return any;
}

}  // namespace kernel

#include "kernel/heal/InwardBodies.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "kernel/heal/ExactPredicates.h"
#include "kernel/heal/FacetTree.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

// The closed bodies that a point lies in, whichever way they face.
std::vector<Index> BodiesAround(const LinkedMesh& linked, const std::vector<Index>& bodies,
                                const std::vector<BodyMeasure>& measures, const FacetTree& tree,
                                double top, Index own) {
  const SurfaceMesh& mesh = linked.mesh;
  const Vec3& point = measures[own].from;
  std::map<Index, bool> isInside;
  const Box3 ray{point, {point.x, point.y, top}};
  tree.ForEachWithin(ray, [&](Index f) {
    const SurfaceMesh::Facet& facet = mesh.facets[f];
    if (bodies[f] == own || measures[bodies[f]].isOpen) return;
    const Triangle triangle = {mesh.Corner(facet, 0), mesh.Corner(facet, 1), mesh.Corner(facet, 2)};
    if (IsAbove(triangle, point)) isInside[bodies[f]] ^= true;
  });
  std::vector<Index> around;
  for (const auto& [body, inside] : isInside) {
    if (inside) around.push_back(body);
  }
  return around;
}

}  // namespace

std::vector<bool> InwardBodies(const LinkedMesh& linked, const std::vector<Index>& bodies,
                               const std::vector<BodyMeasure>& measures) {
  std::vector<bool> inward(measures.size(), false);
  const auto faces = [&](Index body) {
    return (measures[body].volume < 0) != inward[body] ? -1 : 1;
  };
  const bool anyNegative = std::any_of(measures.begin(), measures.end(), [](const BodyMeasure& m) {
    return !m.isOpen && m.volume < 0;
  });
  if (!anyNegative) return inward;
  if (measures.size() == 1) return {true};
  const FacetTree tree(linked.mesh);
  const double top = linked.mesh.Bounds().high.z;
  // A body can only lie in a larger one, which is settled first.
  std::vector<Index> order(measures.size());
  std::iota(order.begin(), order.end(), Index{0});
  std::stable_sort(order.begin(), order.end(), [&](Index a, Index b) {
    return measures[a].box.Diagonal() > measures[b].box.Diagonal();
  });
  for (const Index body : order) {
    if (measures[body].isOpen || measures[body].volume >= 0) continue;
    int winding = 0;  // around the body
    for (const Index other : BodiesAround(linked, bodies, measures, tree, top, body)) {
      winding += faces(other);
    }
    inward[body] = winding <= 0;
  }
  return inward;
}

}  // namespace kernel

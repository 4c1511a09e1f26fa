#include "kernel/heal/MeasureBodies.h"

namespace kernel {

std::vector<BodyMeasure> MeasureBodies(const LinkedMesh& linked,
                                       const std::vector<SurfaceMesh::Index>& bodies) {
  const SurfaceMesh& mesh = linked.mesh;
  std::vector<BodyMeasure> measures;
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const SurfaceMesh::Facet& facet = mesh.facets[f];
    if (bodies[f] >= measures.size()) measures.resize(bodies[f] + std::size_t{1});
    BodyMeasure& body = measures[bodies[f]];
    if (body.facets == 0) body.from = mesh.Corner(facet, 0);
    const Vec3 normal = mesh.Normal(facet);
    // From a vertex of the body: far from the origin the terms would cancel.
    body.volume += Dot(mesh.Corner(facet, 0) - body.from, normal) / 6;
    body.area += Length(normal) / 2;
    ++body.facets;
    for (SurfaceMesh::Index i = 0; i < 3; ++i) {
      body.box.Include(mesh.Corner(facet, i));
      if (linked.IsOpen(static_cast<SurfaceMesh::Index>(3 * f) + i)) body.isOpen = true;
    }
  }
  return measures;
}

}  // namespace kernel

#include "kernel/heal/LinkSound.h"

#include <algorithm>

#include "kernel/heal/InwardBodies.h"
#include "kernel/heal/LinkFacets.h"
#include "kernel/heal/MeasureBodies.h"
#include "kernel/heal/MeshEdges.h"

namespace kernel {
namespace {

bool IsClosedAndAgreed(const MeshEdges& edges) {
  bool good = true;
  edges.ForEach([&](SurfaceMesh::Index, const MeshEdges::Side* begin, const MeshEdges::Side* end) {
    good = good && AreOpposite(begin, end);
  });
  return good;
}

bool HasSlivers(const SurfaceMesh& mesh, double least) {
  return std::any_of(mesh.facets.begin(), mesh.facets.end(), [&](const SurfaceMesh::Facet& facet) {
    return facet.RepeatsVertex() || mesh.Height(facet) < least;
  });
}

bool FacesOutwards(const LinkedMesh& linked, double least) {
  const std::vector<SurfaceMesh::Index> bodies = linked.Bodies();
  const std::vector<BodyMeasure> measures = MeasureBodies(linked, bodies);
  const bool anyFlat = std::any_of(measures.begin(), measures.end(), [&](const BodyMeasure& m) {
    return std::abs(m.volume) <= least * m.area;
  });
  const std::vector<bool> inward = InwardBodies(linked, bodies, measures);
  return !anyFlat && std::find(inward.begin(), inward.end(), true) == inward.end();
}

}  // namespace

std::optional<LinkedMesh> LinkSound(const SurfaceMesh& mesh, double least) {
  const MeshEdges edges(mesh);
  if (!IsClosedAndAgreed(edges) || HasSlivers(mesh, least)) return std::nullopt;
  LinkedMesh linked = LinkFacets(mesh, edges);
  if (!FacesOutwards(linked, least)) return std::nullopt;
  return linked;
}

}  // namespace kernel

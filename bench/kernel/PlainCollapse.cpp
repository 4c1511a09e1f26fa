#include "PlainCollapse.h"

#include <CGAL/Simple_cartesian.h>
#include <CGAL/Surface_mesh.h>
#include <CGAL/Surface_mesh_simplification/Policies/Edge_collapse/Count_stop_predicate.h>
#include <CGAL/Surface_mesh_simplification/Policies/Edge_collapse/GarlandHeckbert_plane_policies.h>
#include <CGAL/Surface_mesh_simplification/edge_collapse.h>

namespace {

using Kernel = CGAL::Simple_cartesian<double>;
using Mesh = CGAL::Surface_mesh<Kernel::Point_3>;

Mesh AsLibraryMesh(const kernel::CutMesh& mesh) {
  Mesh surface;
  for (const kernel::Vec3& p : mesh.vertices) surface.add_vertex({p.x, p.y, p.z});
  for (const kernel::CutMesh::Facet& facet : mesh.facets) {
    const auto& [a, b, c] = facet.vertices;
    surface.add_face(Mesh::Vertex_index(a), Mesh::Vertex_index(b), Mesh::Vertex_index(c));
  }
  return surface;
}

kernel::CutMesh AsCutMesh(Mesh& surface) {
  surface.collect_garbage();
  kernel::CutMesh mesh;
  for (const auto v : surface.vertices()) {
    const Kernel::Point_3& p = surface.point(v);
    mesh.vertices.push_back({p.x(), p.y(), p.z()});
  }
  for (const auto f : surface.faces()) {
    const auto first = surface.halfedge(f);
    const auto second = surface.next(first);
    mesh.facets.push_back(
        {{surface.source(first), surface.source(second), surface.target(second)}, 0});
  }
  return mesh;
}

}  // namespace

kernel::CutMesh PlainCollapse(const kernel::CutMesh& mesh, std::size_t facets) {
  namespace simplification = CGAL::Surface_mesh_simplification;
  Mesh surface = AsLibraryMesh(mesh);
  using Policies = simplification::GarlandHeckbert_plane_policies<Mesh, Kernel>;
  const Policies policies(surface);
  // A closed mesh has three edges for two facets.
  const simplification::Count_stop_predicate<Mesh> stop(facets * 3 / 2);
  simplification::edge_collapse(
      surface, stop,
      CGAL::parameters::get_cost(policies.get_cost()).get_placement(policies.get_placement()));
  return AsCutMesh(surface);
}

#pragma once

// Only for the files that use the library: it is slow to compile.

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Random.h>
#include <CGAL/Surface_mesh.h>
#include <algorithm>
#include <mutex>
#include <vector>

#include "kernel/heal/SurfaceMesh.h"

namespace kernel {

using CgalPoint = CGAL::Exact_predicates_inexact_constructions_kernel::Point_3;
using CgalMesh = CGAL::Surface_mesh<CgalPoint>;

// Colours of facets; -1: not given yet.
using CgalColours = CgalMesh::Property_map<CgalMesh::Face_index, int>;
inline CgalColours ColoursOf(CgalMesh& mesh) {
  return mesh.add_property_map<CgalMesh::Face_index, int>("f:colour", -1).first;
}

// The library's shared constants are built without support for threads: hold this while objects
// with exact constructions live. Its random numbers, seeded by the clock otherwise, begin anew.
inline std::unique_lock<std::mutex> CgalTurn() {
  static std::mutex mutex;
  std::unique_lock turn(mutex);
  CGAL::get_default_random() = CGAL::Random(1);
  return turn;
}

// A closed edge-manifold body; false when the library cannot hold it.
inline bool ToCgal(const SurfaceMesh& body, CgalMesh& mesh) {
  const CgalColours colours = ColoursOf(mesh);
  for (const Vec3& v : body.vertices) mesh.add_vertex(CgalPoint(v.x, v.y, v.z));
  for (const SurfaceMesh::Facet& facet : body.facets) {
    const auto vertex = [&](std::size_t i) { return CgalMesh::Vertex_index(facet.vertices[i]); };
    const CgalMesh::Face_index face = mesh.add_face(vertex(0), vertex(1), vertex(2));
    if (face == CgalMesh::null_face()) return false;
    colours[face] = facet.colour;
  }
  return true;
}

// Facets without a colour get that of a neighbour, those next to one that has one first.
inline void SpreadColours(const CgalMesh& mesh, CgalColours colours) {
  std::vector<CgalMesh::Face_index> front;
  for (const CgalMesh::Face_index face : mesh.faces()) {
    if (colours[face] >= 0) front.push_back(face);
  }
  for (std::size_t i = 0; i < front.size(); ++i) {
    for (const CgalMesh::Halfedge_index half :
         mesh.halfedges_around_face(mesh.halfedge(front[i]))) {
      const CgalMesh::Face_index other = mesh.face(mesh.opposite(half));
      if (other == CgalMesh::null_face() || colours[other] >= 0) continue;
      colours[other] = colours[front[i]];
      front.push_back(other);
    }
  }
}

inline SurfaceMesh FromCgal(const CgalMesh& mesh, CgalColours colours) {
  SurfaceMesh body;
  std::vector<SurfaceMesh::Index> number(mesh.num_vertices() + mesh.number_of_removed_vertices());
  for (const CgalMesh::Vertex_index vertex : mesh.vertices()) {
    number[vertex] = static_cast<SurfaceMesh::Index>(body.vertices.size());
    const CgalPoint& point = mesh.point(vertex);
    body.vertices.push_back({point.x(), point.y(), point.z()});
  }
  for (const CgalMesh::Face_index face : mesh.faces()) {
    SurfaceMesh::Facet facet{{}, static_cast<std::uint8_t>(std::max(colours[face], 0))};
    std::size_t corner = 0;
    for (const CgalMesh::Vertex_index vertex : mesh.vertices_around_face(mesh.halfedge(face))) {
      facet.vertices[corner++] = number[vertex];
    }
    body.facets.push_back(facet);
  }
  return body;
}

}  // namespace kernel

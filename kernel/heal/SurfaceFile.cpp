#include "kernel/heal/SurfaceFile.h"

#include <cmath>

#include "kernel/common/FatalError.h"

namespace kernel {
namespace {

// Sides, three a facet, are numbered with 32 bits, and mending may add facets.
constexpr std::size_t kMostFacets = 1'000'000'000;

}  // namespace

SurfaceMesh SurfaceOf(const formats::Mesh& mesh) {
  if (mesh.facets.size() > kMostFacets) throw FatalError("the surface has too many facets");
  SurfaceMesh surface;
  surface.vertices.reserve(mesh.vertices.size());
  for (const auto& [x, y, z] : mesh.vertices) {
    surface.vertices.push_back({x, y, z});
    if (IsFinite(surface.vertices.back())) continue;
    throw FatalError("vertex " + std::to_string(surface.vertices.size()) +
                     ": a coordinate is not finite");
  }
  surface.facets.reserve(mesh.facets.size());
  for (const formats::Facet& facet : mesh.facets) {
    const auto number = [&](std::size_t i) {
      return static_cast<SurfaceMesh::Index>(facet.vertices[i]);
    };
    surface.facets.push_back({{number(0), number(1), number(2)}, facet.colour});
  }
  // The widest product that is ever formed is of the fourth power of a length.
  const double diagonal = surface.Bounds().Diagonal();
  if (!std::isfinite(diagonal * diagonal * diagonal * diagonal)) {
    throw FatalError("the surface is too large to measure");
  }
  return surface;
}

formats::Mesh FileMeshOf(const SurfaceMesh& surface) {
  formats::Mesh mesh;
  mesh.vertices.reserve(surface.vertices.size());
  for (const Vec3& vertex : surface.vertices) {
    mesh.vertices.push_back({vertex.x, vertex.y, vertex.z});
  }
  mesh.facets.reserve(surface.facets.size());
  for (const SurfaceMesh::Facet& facet : surface.facets) {
    const auto number = [&](std::size_t i) { return static_cast<std::int32_t>(facet.vertices[i]); };
    mesh.facets.push_back({{number(0), number(1), number(2)}, facet.colour});
  }
  return mesh;
}

}  // namespace kernel

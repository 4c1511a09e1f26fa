#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

#include "formats/Mesh.h"

namespace formats {

struct Box {
  std::array<double, 3> lower;
  std::array<double, 3> upper;
};

struct ColourMeasures {
  std::size_t facets = 0;
  double area = 0;
};

// Sizes of a mesh. Facets with a coordinate that is not finite count as facets and nowhere else.
struct MeshMeasures {
  std::size_t nonFiniteVertices = 0;
  std::optional<Box> box;  // of the finite vertices; none without any
  double volume = 0;       // enclosed and signed, positive with outward facets; closed meshes only
  double area = 0;
  std::size_t zeroAreaFacets = 0;
  std::map<std::uint8_t, ColourMeasures> colours;
};

MeshMeasures MeasureMesh(const Mesh& mesh);

// How the facets hang together, by vertex numbers: vertices that share a place but not a number are
// different (see JoinCoincidentVertices). A facet that names a vertex twice has no say in this.
struct MeshTopology {
  std::size_t edges = 0;
  std::size_t openEdges = 0;         // on one facet
  std::size_t flippedEdges = 0;      // on two facets that run through it the same way
  std::size_t flippedFacets = 0;     // fewest to turn over so that neighbours agree
  std::size_t nonManifoldEdges = 0;  // on three facets or more
  std::size_t pinchedVertices = 0;   // fans of facets beyond the first at one vertex, in total
  std::size_t unusedVertices = 0;
  std::size_t repeatedVertexFacets = 0;
  std::size_t components = 0;    // of facets that share edges
  std::size_t holes = 0;         // closed runs of open edges, pinched vertices pulled apart
  std::int64_t eulerNumber = 0;  // of the surface with its pinched vertices pulled apart

  bool IsClosed() const { return openEdges == 0; }
  // Bounds a solid: every edge lies on two facets that run through it in opposite ways.
  bool IsOrientedManifold() const {
    return openEdges == 0 && flippedEdges == 0 && nonManifoldEdges == 0;
  }
  // Handles of all components together; only an oriented manifold has a genus.
  std::optional<std::int64_t> Genus() const {
    if (!IsOrientedManifold()) return std::nullopt;
    return static_cast<std::int64_t>(components) - eulerNumber / 2;
  }
};

// Linear in the mesh's size; about 60 bytes a facet while it runs.
MeshTopology AnalyseTopology(const Mesh& mesh);

// Gives vertices of equal coordinates (0 and -0 are equal, NaN equals nothing) the number of the
// first of them and removes the others; the order is kept. Returns how many were removed.
std::size_t JoinCoincidentVertices(Mesh& mesh);

}  // namespace formats

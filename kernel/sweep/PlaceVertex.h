#pragma once

#include <span>

#include "kernel/common/Box3.h"
#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// Where the surface crosses an edge of the lattice.
struct SurfaceCrossing {
  TangentPlane tangent;
  Generator maker;
};

// The mesh vertex for a loop of crossings (1 to 12) around `cell`: on all their smooth pieces where
// they meet in a point, on the edge where they meet in one, else on the surface, as near to the
// crossings' centroid as that allows. Not further outside the cell than a fraction of its size; the
// centroid itself when nothing better is found.
//
// Source: the idea of Ju, Losasso, Schaefer, Warren, Dual Contouring of Hermite Data (2002), to
// place a vertex where the tangent planes of the crossings meet. Here each tangent plane is first
// moved along its surface towards the vertex, and the vertex is found again until it rests. Planes
// of one smooth piece then coincide, so that curvature is never taken for an edge and the vertex
// lies on the exact surface; planes that still differ by less than a small angle count as one, of
// which the outermost tool's holds. Up to three planes are met exactly (no least squares), so a
// vertex on a plane of the stock lies on it to rounding.
Vec3 PlaceVertex(std::span<const SurfaceCrossing> crossings, const Box3& cell,
                 const SurfaceMakers& makers);

}  // namespace kernel

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
// they meet in a point, on the line where they meet in one, else on the surface, as near to the
// crossings' centroid as that allows. Not further outside the cell than a fraction of its size; the
// centroid itself when nothing better is found.
//
// Source: Ju, Losasso, Schaefer, Warren, Dual Contouring of Hermite Data (2002): the point with the
// least squared distances from the tangent planes, by singular values. Here the tangent planes are
// moved along their surfaces towards the point and the point is found again, until it rests: planes
// of one smooth piece then coincide, so curvature is never taken for an edge, and the point lies on
// the exact surface.
Vec3 PlaceVertex(std::span<const SurfaceCrossing> crossings, const Box3& cell,
                 const SurfaceMakers& makers);

}  // namespace kernel

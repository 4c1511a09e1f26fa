#pragma once

#include "kernel/offset/PrepareSurface.h"

namespace kernel {

// How finely an offset is made.
struct OffsetPlan {
  double tolerance = 0;          // of the surface
  double spacing = 0;            // of the lattice
  bool toleranceRaised = false;  // as the one asked for would take too many facets
  double finestSpacing = 0;      // that time and memory allow
};

// `radius` above 0; `degrees`: the largest turn between neighbouring facets of a rounded piece,
// above 0. Depends on its arguments only, never on the memory that happens to be free.
OffsetPlan PlanOffset(const PreparedSurface& surface, double radius, double degrees);

// Of an arc that is replaced by chords, each turning by so many degrees: how far they are off.
double ChordHeight(double radius, double degrees);

}  // namespace kernel

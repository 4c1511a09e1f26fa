#pragma once

#include "kernel/offset/PlaceOnOffset.h"

namespace kernel {

// How well a facet lies on the exact surface.
struct FacetFit {
  // An area: what the facet covers times how far it faces aside and lies off, 0 where it fits. Less
  // of it in all is better, so it decides between two ways to mesh one place.
  double cost = 0;
  // How far off the farthest of some places is: what the field tells, and more where the facet
  // faces aside, as one does that bridges two walls below their crease.
  double off = 0;
  Vec3 farthest;         // that place
  double fold = 0;       // its height, where it faces backwards
  bool isSound = false;  // no needle

  bool IsBad(double tolerance) const { return off > tolerance || fold > tolerance; }
};

FacetFit FitOf(const LocalOffset& solid, const Corners& facet, const OffsetLimits& limits);

}  // namespace kernel

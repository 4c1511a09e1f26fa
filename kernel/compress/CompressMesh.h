#pragma once

#include "kernel/common/RunAside.h"
#include "kernel/sweep/CutMesh.h"

namespace kernel {

// Merges facets of a closed edge-manifold mesh by moving vertices into neighbours. The surface that
// comes out and the given one are nowhere further than `tolerance` apart, seen from either; that is
// proven for every facet of both in the end, and what fails the proof is merged less or not at all.
//
// Colour borders and edges that are sharp stay: they are simplified along themselves only, and are
// moved by no more than a hundredth of the tolerance. What is sharp (see FeatureEdges) stays so,
// and no other edge becomes so. No facet turns over or becomes lower than `least`. Facets and
// vertices keep their order. Runs on all threads; the outcome does not depend on how many. `tell`
// hears the share that is done.
CutMesh CompressMesh(CutMesh mesh, double tolerance, double least, const Tell& tell);

}  // namespace kernel

#pragma once

#include "kernel/heal/MeasureBodies.h"

namespace kernel {

// For each body whether it must be turned over to face outwards. A closed body faces inwards when
// its volume is negative, unless it lies in another one: then it is a cavity. Nothing is said of
// open bodies.
std::vector<bool> InwardBodies(const LinkedMesh& linked,
                               const std::vector<SurfaceMesh::Index>& bodies,
                               const std::vector<BodyMeasure>& measures);

}  // namespace kernel

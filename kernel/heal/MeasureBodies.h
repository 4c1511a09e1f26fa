#pragma once

#include "kernel/heal/LinkedMesh.h"

namespace kernel {

struct BodyMeasure {
  double volume = 0;  // enclosed and signed, positive with outward facets; closed bodies only
  double area = 0;
  bool isOpen = false;
  Box3 box;
  Vec3 from;  // the first corner of the first facet
  SurfaceMesh::Index facets = 0;
};

// One for each body; `bodies` as LinkedMesh::Bodies numbers them.
std::vector<BodyMeasure> MeasureBodies(const LinkedMesh& linked,
                                       const std::vector<SurfaceMesh::Index>& bodies);

}  // namespace kernel

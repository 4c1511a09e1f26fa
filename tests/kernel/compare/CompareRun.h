#pragma once

#include <vector>

#include "ResultChannel.h"
#include "formats/Mesh.h"
#include "support/geometry/Point.h"

namespace compare_test {

using kernel_test::RecordingDialog;
using kernel_test::SweepResult;

/// Limits and their colours, and the colour above the highest limit.
struct Bands {
  std::vector<double> limits;
  std::vector<unsigned> colours;
  unsigned above = 9;
};

/// Limits -0.05 and 0.05: gouged 1, on size 2, material left standing 3.
extern const Bands kThree;

/// One run of IFSweep::Compare. `channelMemory`: how many vertices and triangles the output takes
/// before it has no memory.
SweepResult RunCompare(const formats::Mesh& part, const formats::Mesh& stock, const Bands& bands,
                       int throwAt = 0, std::size_t channelMemory = SIZE_MAX);

/// Fails the test when a message was given, or when the result is not closed, edge-manifold and
/// outward, or has a facet of no area.
void ExpectSound(const SweepResult& run);

/// Fails the test when the result is not the part itself, facet by facet, in the given colour.
void ExpectUnsplit(const SweepResult& run, const formats::Mesh& part, int colour);

/// Fails the test unless facets of the result have the colours of the bands by the deviations that
/// a witness finds: at corners and many points of facets with an edge above 1/2000 of the part's
/// diagonal, at the centroids of the others. Of many facets about 1500 are looked at.
void ExpectColours(const SweepResult& run, const formats::Mesh& part, const formats::Mesh& stock,
                   const Bands& bands);

/// The surface area in a colour.
double AreaOf(const formats::Mesh& mesh, int colour);

}  // namespace compare_test

#pragma once

#include <array>
#include <string>
#include <vector>

#include "ResultChannel.h"
#include "formats/Mesh.h"
#include "formats/ToolpathRecords.h"

namespace sweep_test {

using kernel_test::RecordingDialog;
using kernel_test::SweepResult;

/// One run of IFSweep over an interchange file of the records. `channelMemory`: how many vertices
/// and triangles the output takes before it has no memory.
SweepResult RunSweep(const formats::Mesh& stock, const std::vector<formats::PathRecord>& records,
                     int throwAt = 0, std::size_t channelMemory = SIZE_MAX);

/// The same, stopped by the first warning, before what it warns of is done.
SweepResult RunSweepUntilWarning(const formats::Mesh& stock,
                                 const std::vector<formats::PathRecord>& records);

/// The same with a file of the given bytes.
SweepResult RunSweepOnBytes(const formats::Mesh& stock, const std::string& bytes);

/// Tips are the cut's positions.
formats::PathRecord PathOf(const formats::ConvexTool& tool, double tolerance,
                           const std::vector<std::array<double, 3>>& tips, int colour = 2);

formats::ConvexTool Ball(double radius);
formats::ConvexTool Flat(double radius);
formats::ConvexTool BullNose(double radius, double corner);

/// Fails the test when the mesh is not closed, edge-manifold and outward, or has a facet of no
/// area.
void ExpectSound(const formats::Mesh& mesh);

}  // namespace sweep_test

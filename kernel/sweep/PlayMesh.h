#pragma once

#include "kernel/common/Reporter.h"
#include "kernel/common/StageProgress.h"
#include "kernel/sweep/CutMesh.h"

struct SurfaceTransfer;

namespace kernel {

// Plays a mesh into a channel: Reset, the vertices that facets use in their order, facets, Close.
// Throws FatalError when the channel has no memory. The stage is ended before Close, as a channel
// may act on the mesh at once and nothing is reported after that.
void PlayMesh(const CutMesh& mesh, SurfaceTransfer& output, Reporter& reporter);
void PlayMesh(const CutMesh& mesh, SurfaceTransfer& output, StageProgress& progress);

}  // namespace kernel

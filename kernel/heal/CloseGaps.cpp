#include "kernel/heal/CloseGaps.h"

#include "kernel/heal/JoinOpenVertices.h"
#include "kernel/heal/SplitOpenSides.h"

namespace kernel {
namespace {

// Each turn closes most of what is left; pieces that split each other for ever are not worth more.
constexpr int kMostTurns = 12;

}  // namespace

MeshEdges CloseGaps(SurfaceMesh& mesh, MeshEdges edges, const Reach& reach, double least) {
  for (int turn = 0; turn < kMostTurns; ++turn) {
    const bool joined = JoinOpenVertices(mesh, edges, reach);
    if (joined) edges = MeshEdges(mesh);
    const bool split = SplitOpenSides(mesh, edges, reach, least);
    if (split) edges = MeshEdges(mesh);
    if (!joined && !split) break;
  }
  return edges;
}

}  // namespace kernel

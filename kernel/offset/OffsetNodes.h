#pragma once

#include <functional>

#include "kernel/offset/OffsetField.h"
#include "kernel/sweep/NodeSigns.h"

namespace kernel {

// Which nodes of the lattice lie in what a field leaves. Cubes of nodes that one distance shows to
// be all alike are decided by it, the others are parted, so that the work is in proportion to the
// surface. Runs on all threads; `watch` hears the share that is done.
NodeSigns NodesOf(const OffsetField& field, const DexelLattice& lattice,
                  const std::function<void(double)>& watch);

}  // namespace kernel

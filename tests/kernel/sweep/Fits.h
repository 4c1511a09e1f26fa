#pragma once

#include "SweepRun.h"
#include "support/geometry/MovedTools.h"

namespace sweep_test {

/// Cut surface and moved tools agree within the tolerance, both ways: vertices and facet centres in
/// the colour `cut`, and points of the tools' surface in the box from `low` to `high`.
void ExpectFits(const SweepResult& run, const support::MovedTools& tools, std::uint8_t cut,
                double tolerance, const support::Point& low, const support::Point& high);

}  // namespace sweep_test

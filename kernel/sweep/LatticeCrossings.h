#pragma once

#include "kernel/sweep/DexelModel.h"
#include "kernel/sweep/FindCrossing.h"

namespace kernel {

// Where the surface of a solid crosses the edges of a lattice. May be asked on several threads.
class LatticeCrossings {
 public:
  LatticeCrossings() = default;
  LatticeCrossings(const LatticeCrossings&) = delete;
  LatticeCrossings& operator=(const LatticeCrossings&) = delete;
  virtual ~LatticeCrossings() = default;

  virtual const DexelLattice& Lattice() const = 0;
  // On the edge from `node` to the next one along `axis`, of which one is solid: this one when
  // `leaving`.
  virtual RayCrossing On(int axis, const std::array<int, 3>& node, bool leaving) const = 0;
};

// As the rays of a model say. Keeps a reference to it.
class RayCrossings final : public LatticeCrossings {
 public:
  explicit RayCrossings(const DexelModel& model) : m_model(model) {}

  const DexelLattice& Lattice() const override { return m_model.Lattice(); }
  RayCrossing On(int axis, const std::array<int, 3>& node, bool leaving) const override {
    const auto along = [&](int a) { return node[static_cast<std::size_t>(a % 3)]; };
    return FindCrossing(m_model.Ray(axis, along(axis + 1), along(axis + 2)),
                        Lattice().Coordinate(axis, along(axis)),
                        Lattice().Coordinate(axis, along(axis) + 1), leaving);
  }

 private:
  const DexelModel& m_model;
};

}  // namespace kernel

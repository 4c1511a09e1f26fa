#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kernel/sweep/DexelLattice.h"

namespace kernel {

// What made a piece of surface: a stock facet or a move, by number. From it colour, normal and the
// exact surface are found again, so that none of them is stored with a ray.
class Generator {
 public:
  static constexpr std::uint32_t kMostNumber = 0x7FFFFFFE;

  Generator() = default;
  static Generator StockFacet(std::uint32_t number) { return Generator(number); }
  static Generator Move(std::uint32_t number) { return Generator(number | kMoveBit); }

  bool IsMove() const { return (m_code & kMoveBit) != 0; }
  std::uint32_t Number() const { return m_code & ~kMoveBit; }
  std::uint32_t Code() const { return m_code; }
  friend bool operator==(Generator, Generator) = default;

 private:
  static constexpr std::uint32_t kMoveBit = 0x80000000;
  explicit Generator(std::uint32_t code) : m_code(code) {}

  std::uint32_t m_code = 0;
};

// A stretch of solid on a ray, low < high, in coordinates along the ray.
struct SolidInterval {
  double low = 0, high = 0;
  Generator lowMaker, highMaker;
};

// Disjoint, in ascending order.
using DexelRay = std::vector<SolidInterval>;

// A solid as three families of rays. Lengths up to Sliver() count as none.
class DexelModel {
 public:
  DexelModel(const DexelLattice& lattice, double sliver) : m_lattice(lattice), m_sliver(sliver) {
    for (int axis = 0; axis < 3; ++axis) Rays(axis).resize(lattice.RayCount(axis));
  }

  const DexelLattice& Lattice() const { return m_lattice; }
  double Sliver() const { return m_sliver; }
  std::vector<DexelRay>& Rays(int axis) { return m_rays[static_cast<std::size_t>(axis)]; }
  const std::vector<DexelRay>& Rays(int axis) const {
    return m_rays[static_cast<std::size_t>(axis)];
  }
  const DexelRay& Ray(int axis, int i, int j) const {
    return Rays(axis)[m_lattice.RayIndex(axis, i, j)];
  }

 private:
  DexelLattice m_lattice;
  double m_sliver;
  std::array<std::vector<DexelRay>, 3> m_rays;
};

}  // namespace kernel

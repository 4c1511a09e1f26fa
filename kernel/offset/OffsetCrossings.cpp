#include "kernel/offset/OffsetCrossings.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

constexpr std::size_t kChunk = 2048;
// Bodies that one edge may leave one after the other, and steps towards the end of one.
constexpr int kMostBodies = 100;
constexpr int kMostSteps = 40;

class EdgeWalk {
 public:
  explicit EdgeWalk(const OffsetField& field) : m_field(field) {}

  // Along the axis from a place that is taken away to one that is left, both by their coordinate;
  // `line` gives the other coordinates.
  RayCrossing Walk(const Vec3& line, int axis, double from, double to) {
    m_line = line;
    m_axis = axis;
    m_to = to;
    m_forward = to > from ? 1 : -1;
    const double enough = 8 * m_field.Rounding();
    double at = from;
    for (int body = 0; body < kMostBodies; ++body) {
      const OffsetField::Off off = m_field.At(PlaceAt(at), m_guess);
      m_guess = off.slot;
      if (off.distance <= enough) break;
      // Beyond the band on the wrong side of the mesh the way is free as far as the mesh.
      const double free = off.distance - m_field.Radius();
      const double next = free > 0 ? at + m_forward * free : EndOf(off.slot);
      if ((next - at) * m_forward <= 0) break;
      at = next;
      if ((to - at) * m_forward <= 0) {
        at = to;
        break;
      }
    }
    return {at, Generator::Move(m_guess)};
  }

 private:
  Vec3 PlaceAt(double at) const {
    return {m_axis == 0 ? at : m_line.x, m_axis == 1 ? at : m_line.y, m_axis == 2 ? at : m_line.z};
  }

  // Where the line leaves a body. Newton's method from the far end, which is outside: a convex
  // function is approached from one side only.
  double EndOf(std::uint32_t slot) const {
    double at = m_to;
    for (int step = 0; step < kMostSteps; ++step) {
      const OffsetField::Slope slope = m_field.SlopeOf(slot, PlaceAt(at));
      const double steep = slope.gradient[m_axis] * m_forward;
      if (slope.distance <= 0 || !(steep > 0)) break;
      const double next = at - m_forward * (slope.distance / steep);
      if (next == at) break;
      at = next;
      if (slope.distance <= m_field.Rounding()) break;
    }
    return at;
  }

  const OffsetField& m_field;
  Vec3 m_line;
  int m_axis = 0;
  double m_to = 0, m_forward = 1;
  std::uint32_t m_guess = 0;
};

}  // namespace

OffsetCrossings::OffsetCrossings(const OffsetField& field, const DexelLattice& lattice,
                                 const SurfaceCells& cells,
                                 const std::function<void(double)>& watch)
    : m_lattice(lattice), m_cells(cells), m_crossings(3 * cells.Count()) {
  const std::size_t count = (cells.Count() + kChunk - 1) / kChunk;
  const auto find = [&](EdgeWalk& walk, std::size_t number, int axis) {
    const SurfaceCells::Cell& cell = cells.At(number);
    const unsigned signs = cells.SignsOf(cell);
    const unsigned nextSigns = signs >> (1U << static_cast<unsigned>(axis));
    if (((signs ^ nextSigns) & 1U) == 0) return;
    const bool isLeft = (signs & 1U) != 0;
    const double here = lattice.Coordinate(axis, cell[axis]);
    const double next = lattice.Coordinate(axis, cell[axis] + 1);
    m_crossings[3 * number + static_cast<std::size_t>(axis)] = walk.Walk(
        lattice.Node(cell.i, cell.j, cell.k), axis, isLeft ? next : here, isLeft ? here : next);
  };
  RunTasks(
      count,
      [&](std::size_t chunk) {
        EdgeWalk walk(field);
        const std::size_t end = std::min(cells.Count(), (chunk + 1) * kChunk);
        for (std::size_t number = chunk * kChunk; number < end; ++number) {
          for (int axis = 0; axis < 3; ++axis) find(walk, number, axis);
        }
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(count)); });
}

RayCrossing OffsetCrossings::On(int axis, const std::array<int, 3>& node, bool /*leaving*/) const {
  return m_crossings[3 * m_cells.NumberOf(node[0], node[1], node[2]) +
                     static_cast<std::size_t>(axis)];
}

}  // namespace kernel

#include "kernel/offset/OffsetNodes.h"

#include <algorithm>
#include <cmath>

#include "kernel/common/Workers.h"

namespace kernel {
namespace {

constexpr int kSide = 64;     // of the largest cubes, in nodes; columns of them are tasks
constexpr int kSmallest = 2;  // cubes of this side are decided node by node

class Columns {
 public:
  Columns(const OffsetField& field, const DexelLattice& lattice, NodeSigns& signs)
      : m_field(field), m_lattice(lattice), m_signs(signs) {}

  void Fill(int i, int j) {
    for (int k = 0; k < m_lattice.Nodes(2); k += kSide) Decide({i, j, k}, kSide);
  }

 private:
  using Node = std::array<int, 3>;

  Node EndOf(const Node& low, int side) const {
    Node end{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      end[axis] = std::min(low[axis] + side, m_lattice.Nodes(static_cast<int>(axis)));
    }
    return end;
  }

  void Decide(const Node& low, int side) {
    const Node end = EndOf(low, side);
    if (low[0] >= end[0] || low[1] >= end[1] || low[2] >= end[2]) return;
    const Vec3 first = m_lattice.Node(low[0], low[1], low[2]);
    const Vec3 last = m_lattice.Node(end[0] - 1, end[1] - 1, end[2] - 1);
    const double off = OffAt((first + last) / 2);
    const double reach = Length(last - first) / 2 + m_field.Rounding();
    if (std::abs(off) > reach) {
      if (off < 0) MarkAll(low, end);
    } else if (side == kSmallest) {
      DecideEach(low, end);
    } else {
      for (int part = 0; part < 8; ++part) {
        const int half = side / 2;
        Decide({low[0] + (part & 1) * half, low[1] + (part >> 1 & 1) * half,
                low[2] + (part >> 2) * half},
               half);
      }
    }
  }

  void MarkAll(const Node& low, const Node& end) {
    for (int j = low[1]; j < end[1]; ++j) {
      for (int i = low[0]; i < end[0]; ++i) m_signs.MarkSolid(i, j, low[2], end[2]);
    }
  }

  void DecideEach(const Node& low, const Node& end) {
    for (int j = low[1]; j < end[1]; ++j) {
      for (int i = low[0]; i < end[0]; ++i) {
        for (int k = low[2]; k < end[2]; ++k) {
          if (OffAt(m_lattice.Node(i, j, k)) < 0) m_signs.MarkSolid(i, j, k, k + 1);
        }
      }
    }
  }

  double OffAt(const Vec3& point) {
    const OffsetField::Off off = m_field.At(point, m_guess);
    m_guess = off.slot;
    return off.distance;
  }

  const OffsetField& m_field;
  const DexelLattice& m_lattice;
  NodeSigns& m_signs;
  std::uint32_t m_guess = 0;
};

}  // namespace

NodeSigns NodesOf(const OffsetField& field, const DexelLattice& lattice,
                  const std::function<void(double)>& watch) {
  NodeSigns signs(lattice);
  const int across = (lattice.Nodes(0) + kSide - 1) / kSide;
  const int along = (lattice.Nodes(1) + kSide - 1) / kSide;
  const auto count = static_cast<std::size_t>(across) * static_cast<std::size_t>(along);
  RunTasks(
      count,
      [&](std::size_t task) {
        const auto number = static_cast<int>(task);
        Columns(field, lattice, signs).Fill(number % across * kSide, number / across * kSide);
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(count)); });
  return signs;
}

}  // namespace kernel

#include "kernel/sweep/CellVertices.h"

#include <algorithm>
#include <tuple>

#include "kernel/common/FatalError.h"
#include "kernel/common/Workers.h"

namespace kernel {
namespace {

constexpr std::size_t kChunk = 2048;

}  // namespace

CellVertices::CellVertices(const LatticeCrossings& crossings, const SurfaceCells& cells,
                           const SurfaceMakers& makers)
    : m_crossings(crossings), m_cells(cells), m_makers(makers) {
  NumberVertices();
}

void CellVertices::Place(const std::function<void(double)>& watch) {
  const std::size_t chunks = (m_cells.Count() + kChunk - 1) / kChunk;
  RunTasks(
      chunks,
      [&](std::size_t chunk) {
        const std::size_t end = std::min(m_cells.Count(), (chunk + 1) * kChunk);
        for (std::size_t cell = chunk * kChunk; cell < end; ++cell) PlaceCell(cell);
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(chunks)); });
  for (const Joint& joint : m_joints) PlaceJoint(joint);
}

std::uint32_t CellVertices::OfLoop(std::size_t cell, int edge) const {
  const CellTopology& topology = TopologyOf(m_cells.SignsOf(m_cells.At(cell)));
  return m_firstVertex[cell] +
         static_cast<std::uint32_t>(topology.loopOfEdge[static_cast<std::size_t>(edge)]);
}

std::uint32_t CellVertices::OnJoint(std::size_t cell, int axis, int edge) const {
  if (m_joints.empty()) return kNone;
  const int corner = SolidEnd(m_cells.SignsOf(m_cells.At(cell)), edge);
  const auto at =
      std::lower_bound(m_joints.begin(), m_joints.end(), std::tuple(cell, axis, corner),
                       [](const Joint& joint, const std::tuple<std::size_t, int, int>& key) {
                         return std::tuple(joint.cell, joint.axis, joint.solidCorner) < key;
                       });
  const bool found =
      at != m_joints.end() && at->cell == cell && at->axis == axis && at->solidCorner == corner;
  return found ? at->vertex : kNone;
}

SurfaceCrossing CellVertices::CrossingOn(const SurfaceCells::Cell& cell, unsigned signs,
                                         int edge) const {
  const int axis = EdgeAxis(edge);
  const int corner = EdgeCorner(edge);
  const std::array<int, 3> node = {cell.i + (corner & 1), cell.j + (corner >> 1 & 1),
                                   cell.k + (corner >> 2)};
  const RayCrossing found = m_crossings.On(axis, node, (signs >> corner & 1U) != 0);
  Vec3 point = m_crossings.Lattice().Node(node[0], node[1], node[2]);
  point[axis] = found.at;
  return {m_makers.TangentAt(found.maker, point), found.maker};
}

void CellVertices::NumberVertices() {
  std::uint64_t count = 0;
  m_firstVertex.reserve(m_cells.Count());
  for (std::size_t number = 0; number < m_cells.Count(); ++number) {
    const SurfaceCells::Cell& cell = m_cells.At(number);
    const unsigned signs = m_cells.SignsOf(cell);
    const CellTopology& topology = TopologyOf(signs);
    m_firstVertex.push_back(static_cast<std::uint32_t>(count));
    count += static_cast<std::uint64_t>(topology.loopCount);
    for (int axis = 0; axis < 3; ++axis) {
      if (!topology.oneLoopTwice[2 * static_cast<std::size_t>(axis) + 1]) continue;
      const std::size_t beyond =
          m_cells.NumberOf(cell.i + (axis == 0), cell.j + (axis == 1), cell.k + (axis == 2));
      const CellTopology& other = TopologyOf(m_cells.SignsOf(m_cells.At(beyond)));
      if (!other.oneLoopTwice[2 * static_cast<std::size_t>(axis)]) continue;
      for (int corner = 0; corner < 8; ++corner) {
        const bool onFace = (corner >> axis & 1) != 0;
        if (onFace && (signs >> corner & 1U) != 0) m_joints.push_back({number, axis, corner, 0});
      }
    }
  }
  for (Joint& joint : m_joints) joint.vertex = static_cast<std::uint32_t>(count++);
  if (count >= kNone) throw FatalError("Memory limit reached.");
  m_positions.resize(count);
}

void CellVertices::PlaceCell(std::size_t number) {
  const SurfaceCells::Cell& cell = m_cells.At(number);
  const unsigned signs = m_cells.SignsOf(cell);
  const CellTopology& topology = TopologyOf(signs);
  for (int loop = 0; loop < topology.loopCount; ++loop) {
    std::array<SurfaceCrossing, 12> crossings;
    std::size_t count = 0;
    for (int edge = 0; edge < 12; ++edge) {
      if (topology.loopOfEdge[static_cast<std::size_t>(edge)] != loop) continue;
      crossings[count++] = CrossingOn(cell, signs, edge);
    }
    m_positions[m_firstVertex[number] + static_cast<std::uint32_t>(loop)] =
        PlaceVertex({crossings.data(), count}, BoxOf(cell), m_makers);
  }
}

void CellVertices::PlaceJoint(const Joint& joint) {
  const SurfaceCells::Cell& cell = m_cells.At(joint.cell);
  const unsigned signs = m_cells.SignsOf(cell);
  std::array<SurfaceCrossing, 2> crossings;
  std::size_t count = 0;
  // The face's two edges at the solid corner.
  for (int edge = 0; edge < 12; ++edge) {
    const int low = EdgeCorner(edge);
    const int high = low | (1 << EdgeAxis(edge));
    const bool onFace = (low >> joint.axis & 1) != 0 && EdgeAxis(edge) != joint.axis;
    if (!onFace || (low != joint.solidCorner && high != joint.solidCorner)) continue;
    crossings[count++] = CrossingOn(cell, signs, edge);
  }
  m_positions[joint.vertex] = PlaceVertex({crossings.data(), count}, BoxOf(cell), m_makers);
}

Box3 CellVertices::BoxOf(const SurfaceCells::Cell& cell) const {
  const DexelLattice& lattice = m_crossings.Lattice();
  return {lattice.Node(cell.i, cell.j, cell.k), lattice.Node(cell.i + 1, cell.j + 1, cell.k + 1)};
}

}  // namespace kernel

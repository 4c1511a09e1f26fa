#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/sweep/CellTopology.h"
#include "kernel/sweep/LatticeCrossings.h"
#include "kernel/sweep/PlaceVertex.h"
#include "kernel/sweep/SurfaceCells.h"

namespace kernel {

// The vertices of the dual mesh: one for each loop of each cell, and one for each joint of an
// ambiguous face that would otherwise become a second edge between the same two vertices.
class CellVertices {
 public:
  // Numbers the vertices; keeps references to its arguments.
  CellVertices(const LatticeCrossings& crossings, const SurfaceCells& cells,
               const SurfaceMakers& makers);

  // Finds all positions, on all threads; `watch` hears the share that is done.
  void Place(const std::function<void(double)>& watch);

  const std::vector<Vec3>& Positions() const { return m_positions; }

  // The vertex of the loop that crosses `edge` of the cell.
  std::uint32_t OfLoop(std::size_t cell, int edge) const;

  // The vertex on the joint through `edge` of the cell on its face 2 axis + 1; kNone where the
  // joint needs none.
  static constexpr std::uint32_t kNone = UINT32_MAX;
  std::uint32_t OnJoint(std::size_t cell, int axis, int edge) const;

  SurfaceCrossing CrossingOn(const SurfaceCells::Cell& cell, unsigned signs, int edge) const;

 private:
  struct Joint {
    std::size_t cell;
    int axis, solidCorner;
    std::uint32_t vertex;
  };

  void NumberVertices();
  void PlaceCell(std::size_t number);
  void PlaceJoint(const Joint& joint);
  Box3 BoxOf(const SurfaceCells::Cell& cell) const;

  const LatticeCrossings& m_crossings;
  const SurfaceCells& m_cells;
  const SurfaceMakers& m_makers;
  std::vector<std::uint32_t> m_firstVertex;  // of each cell
  std::vector<Joint> m_joints;               // ordered by cell, axis, corner
  std::vector<Vec3> m_positions;
};

}  // namespace kernel

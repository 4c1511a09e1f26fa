#pragma once

#include <array>
#include <cstdint>

namespace kernel {

// How the surface runs through one cell of the lattice, from the signs of its corners alone.
//
// Notation. Corner c of a cell lies at (c & 1, c >> 1 & 1, c >> 2 & 1); bit c of `signs` is set
// when it is solid. Edge 4 a + n runs along axis a from its corner EdgeCorner(e); n = i + 2 j gives
// its place along u = a + 1 and v = a + 2 (cyclic). Face 2 a + s is the one across axis a on side
// s.
//
// The crossings (edges whose ends differ) on each face are joined in pairs; on a face with four,
// each pair cuts off one solid corner, which the two cells at the face see alike. The joints close
// to loops, at most four; each loop becomes one vertex of the mesh. Source: Nielson, Dual Marching
// Cubes (2004), with the face rule above in place of tabulated cases.
struct CellTopology {
  int loopCount = 0;
  std::array<std::int8_t, 12> loopOfEdge{};  // -1 where there is no crossing
  // Faces with four crossings that belong to one loop: seen so from both sides, two edges of the
  // mesh would join the same two vertices.
  std::array<bool, 6> oneLoopTwice{};
};

const CellTopology& TopologyOf(unsigned signs);

constexpr int EdgeNumber(int axis, int i, int j) { return 4 * axis + i + 2 * j; }
constexpr int EdgeAxis(int edge) { return edge / 4; }
constexpr int EdgeCorner(int edge) {
  const int axis = edge / 4;
  return ((edge & 1) << ((axis + 1) % 3)) | (((edge >> 1) & 1) << ((axis + 2) % 3));
}

// The solid corner that the joint through this crossing cuts off on an ambiguous face: the edge's
// solid end.
constexpr int SolidEnd(unsigned signs, int edge) {
  const int low = EdgeCorner(edge);
  return (signs >> low & 1U) != 0 ? low : low | (1 << EdgeAxis(edge));
}

}  // namespace kernel

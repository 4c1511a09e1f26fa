#include "kernel/sweep/CellTopology.h"

namespace kernel {
namespace {

// The four edges around face 2 a + s in cyclic order, each beside the next.
std::array<int, 4> EdgesOfFace(int face) {
  const int a = face / 2;
  const int side = face % 2;
  const int u = (a + 1) % 3;
  const int v = (a + 2) % 3;
  // Along u the other axes are v, a; along v they are a, u.
  return {EdgeNumber(u, 0, side), EdgeNumber(v, side, 1), EdgeNumber(u, 1, side),
          EdgeNumber(v, side, 0)};
}

bool Crosses(unsigned signs, int edge) {
  const int low = EdgeCorner(edge);
  return (signs >> low & 1U) != (signs >> (low | (1 << EdgeAxis(edge))) & 1U);
}

class Joints {
 public:
  Joints() {
    for (auto& partners : m_partners) partners = {-1, -1};
  }
  void Join(int a, int b) {
    Add(a, b);
    Add(b, a);
  }
  const std::array<int, 2>& Of(int edge) const {
    return m_partners[static_cast<std::size_t>(edge)];
  }

 private:
  void Add(int edge, int other) {
    auto& partners = m_partners[static_cast<std::size_t>(edge)];
    partners[partners[0] < 0 ? 0 : 1] = other;
  }
  std::array<std::array<int, 2>, 12> m_partners;
};

// Returns whether the face is ambiguous.
bool JoinOnFace(unsigned signs, int face, Joints& joints) {
  std::array<int, 4> crossing{};
  std::size_t count = 0;
  const std::array<int, 4> edges = EdgesOfFace(face);
  for (const int edge : edges) {
    if (Crosses(signs, edge)) crossing[count++] = edge;
  }
  if (count == 2) joints.Join(crossing[0], crossing[1]);
  if (count != 4) return false;
  const bool firstTwo = SolidEnd(signs, edges[0]) == SolidEnd(signs, edges[1]);
  joints.Join(edges[0], edges[firstTwo ? 1 : 3]);
  joints.Join(edges[2], edges[firstTwo ? 3 : 1]);
  return true;
}

CellTopology Build(unsigned signs) {
  Joints joints;
  std::array<bool, 6> ambiguous{};
  for (int face = 0; face < 6; ++face) {
    ambiguous[static_cast<std::size_t>(face)] = JoinOnFace(signs, face, joints);
  }
  CellTopology topology;
  topology.loopOfEdge.fill(-1);
  for (int edge = 0; edge < 12; ++edge) {
    if (!Crosses(signs, edge) || topology.loopOfEdge[static_cast<std::size_t>(edge)] >= 0) continue;
    int before = -1;
    for (int at = edge; topology.loopOfEdge[static_cast<std::size_t>(at)] < 0;) {
      topology.loopOfEdge[static_cast<std::size_t>(at)] =
          static_cast<std::int8_t>(topology.loopCount);
      const int next = joints.Of(at)[joints.Of(at)[0] == before ? 1 : 0];
      before = at;
      at = next;
    }
    ++topology.loopCount;
  }
  for (int face = 0; face < 6; ++face) {
    if (!ambiguous[static_cast<std::size_t>(face)]) continue;
    const std::array<int, 4> edges = EdgesOfFace(face);
    topology.oneLoopTwice[static_cast<std::size_t>(face)] =
        topology.loopOfEdge[static_cast<std::size_t>(edges[0])] ==
        topology.loopOfEdge[static_cast<std::size_t>(edges[2])];
  }
  return topology;
}

std::array<CellTopology, 256> BuildAll() {
  std::array<CellTopology, 256> all;
  for (unsigned signs = 0; signs < 256; ++signs) all[signs] = Build(signs);
  return all;
}

}  // namespace

const CellTopology& TopologyOf(unsigned signs) {
  static const std::array<CellTopology, 256> all = BuildAll();
  return all[signs];
}

}  // namespace kernel

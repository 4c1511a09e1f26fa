#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "kernel/outline/PlaneEdge.h"

namespace kernel {

struct Box2 {
  double lowX, lowY, highX, highY;

  static Box2 Of(const PlaneEdge& edge) {
    return {std::min(edge.from.x, edge.to.x), std::min(edge.from.y, edge.to.y),
            std::max(edge.from.x, edge.to.x), std::max(edge.from.y, edge.to.y)};
  }
  void Include(const Box2& other) {
    lowX = std::min(lowX, other.lowX);
    lowY = std::min(lowY, other.lowY);
    highX = std::max(highX, other.highX);
    highY = std::max(highY, other.highY);
  }
  bool Meets(const Box2& other) const {
    return lowX <= other.highX && other.lowX <= highX && lowY <= other.highY && other.lowY <= highY;
  }
};

// A tree of boxes over edges, split at the median of the wider side. Keeps a reference to the
// edges.
class EdgeTree {
 public:
  // `tell` is called now and then; what it throws passes on.
  explicit EdgeTree(
      const std::vector<PlaneEdge>& edges, const std::function<void()>& tell = [] {});

  // Calls visit(edge number) for each edge whose box meets `box`.
  template <typename Visit>
  void ForEachMeeting(const Box2& box, const Visit& visit) const {
    if (m_nodes.empty()) return;
    std::uint32_t stack[64];  // deeper than a tree of halves of 2^32 edges
    int depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
      const Node& node = m_nodes[stack[--depth]];
      if (!node.box.Meets(box)) continue;
      if (node.second == 0) {
        for (std::uint32_t i = node.begin; i < node.end; ++i) {
          if (m_boxes[i].Meets(box)) visit(m_order[i]);
        }
        continue;
      }
      stack[depth++] = node.second;
      stack[depth++] = static_cast<std::uint32_t>(&node - m_nodes.data()) + 1;
    }
  }

 private:
  // The first child follows its parent; `second` is 0 in a leaf.
  struct Node {
    Box2 box;
    std::uint32_t begin, end, second;
  };

  void Build(std::uint32_t begin, std::uint32_t end, const std::function<void()>& tell);

  std::vector<Box2> m_boxes;  // in the order of m_order
  std::vector<std::uint32_t> m_order;
  std::vector<Node> m_nodes;
};

}  // namespace kernel

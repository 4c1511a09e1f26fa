#include "kernel/outline/EdgeTree.h"

#include <numeric>

namespace kernel {
namespace {

constexpr std::uint32_t kLeafSize = 8;
constexpr std::uint32_t kTold = 1U << 16;  // edges of a node that takes a noticeable time

}  // namespace

EdgeTree::EdgeTree(const std::vector<PlaneEdge>& edges, const std::function<void()>& tell)
    : m_order(edges.size()) {
  std::iota(m_order.begin(), m_order.end(), 0U);
  m_boxes.reserve(edges.size());
  for (const PlaneEdge& edge : edges) m_boxes.push_back(Box2::Of(edge));
  if (edges.empty()) return;
  m_nodes.reserve(edges.size() / 2 + 2);
  Build(0, static_cast<std::uint32_t>(edges.size()), tell);
  std::vector<Box2> ordered;
  ordered.reserve(edges.size());
  for (const std::uint32_t edge : m_order) ordered.push_back(m_boxes[edge]);
  m_boxes.swap(ordered);
}

void EdgeTree::Build(std::uint32_t begin, std::uint32_t end, const std::function<void()>& tell) {
  if (end - begin >= kTold) tell();
  Box2 box = m_boxes[m_order[begin]];
  for (std::uint32_t i = begin + 1; i < end; ++i) box.Include(m_boxes[m_order[i]]);
  const std::size_t node = m_nodes.size();
  m_nodes.push_back({box, begin, end, 0});
  if (end - begin <= kLeafSize) return;
  const bool alongX = box.highX - box.lowX >= box.highY - box.lowY;
  const auto twiceCentre = [&](std::uint32_t edge) {
    const Box2& of = m_boxes[edge];
    return alongX ? of.lowX + of.highX : of.lowY + of.highY;
  };
  const std::uint32_t middle = begin + (end - begin) / 2;
  const auto at = [&](std::uint32_t i) { return m_order.begin() + static_cast<std::ptrdiff_t>(i); };
  std::nth_element(at(begin), at(middle), at(end), [&](std::uint32_t a, std::uint32_t b) {
    const double ofA = twiceCentre(a), ofB = twiceCentre(b);
    return ofA != ofB ? ofA < ofB : a < b;
  });
  Build(begin, middle, tell);
  m_nodes[node].second = static_cast<std::uint32_t>(m_nodes.size());
  Build(middle, end, tell);
}

}  // namespace kernel

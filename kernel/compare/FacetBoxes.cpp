#include "kernel/compare/FacetBoxes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/common/Workers.h"
#include "kernel/compare/FacetBoxBuilder.h"

namespace kernel {
namespace {

constexpr std::size_t kSubtrees = 64;    // built side by side
constexpr std::size_t kFewFacets = 512;  // a subtree of fewer is not worth a task
constexpr std::size_t kBlock = 65536;    // facets whose boxes are made by one task

// Outwards by more than what rounding to single precision takes away.
constexpr float kOutwards = 1.5e-7F;

}  // namespace

double FacetBoxes::Largest(const Place& place) {
  float largest = 1;
  for (const float at : place.at) largest = std::max(largest, std::abs(at));
  return static_cast<double>(largest);
}

FacetBoxes::FacetBoxes(const StockMesh& mesh, const std::function<void(double)>& watch) {
  Box3 box;
  for (const Vec3& vertex : mesh.vertices) box.Include(vertex);
  const Vec3 half = (box.high - box.low) * 0.5;
  m_centre = box.low + half;
  const double reach = std::max({half.x, half.y, half.z});
  m_scale = reach > 0 ? 1 / reach : 1;

  std::vector<FacetBox> boxes(mesh.facets.size());
  const auto nothing = [&](std::size_t) { watch(0.1); };
  RunTasks((boxes.size() + kBlock - 1) / kBlock,
           [&](std::size_t block) {
             const std::size_t end = std::min(boxes.size(), (block + 1) * kBlock);
             for (std::size_t f = block * kBlock; f < end; ++f) {
               FacetBox& made = boxes[f];
               made.facet = static_cast<std::uint32_t>(f);
               for (const std::uint32_t v : mesh.facets[f].vertices) {
                 made.Include(PlaceOf(mesh.vertices[v]).at);
               }
               for (int axis = 0; axis < 3; ++axis) {
                 made.low[axis] -= kOutwards;
                 made.high[axis] += kOutwards;
               }
             }
           },
           nothing);

  FacetBoxBuilder top(boxes);
  std::vector<FacetBoxBuilder::Open> open = top.BuildTop(kSubtrees, kFewFacets);
  struct Subtree {
    std::vector<Node> nodes;
    std::vector<Leaf> leaves;
  };
  std::vector<Subtree> subtrees(open.size());
  RunTasks(
      open.size(),
      [&](std::size_t i) {
        FacetBoxBuilder below(boxes);
        below.BuildAll(open[i].range, open[i].depth);
        subtrees[i] = {below.TakeNodes(), below.TakeLeaves()};
      },
      [&](std::size_t done) {
        watch(0.3 + 0.5 * static_cast<double>(done) / static_cast<double>(open.size() + 1));
      });
  m_nodes = top.TakeNodes();
  m_leaves = top.TakeLeaves();
  for (std::size_t i = 0; i < open.size(); ++i) {
    const auto nodesBefore = static_cast<std::uint32_t>(m_nodes.size());
    const auto leavesBefore = static_cast<std::uint32_t>(m_leaves.size());
    m_nodes[open[i].node].child[open[i].child] = nodesBefore;
    for (Node node : subtrees[i].nodes) {
      for (std::size_t c = 0; c < kWidth; ++c) {
        node.child[c] += node.isLeaf[c] ? leavesBefore : nodesBefore;
      }
      m_nodes.push_back(node);
    }
    m_leaves.insert(m_leaves.end(), subtrees[i].leaves.begin(), subtrees[i].leaves.end());
    subtrees[i] = {};
  }
  m_facets.reserve(boxes.size());
  for (const FacetBox& made : boxes) m_facets.push_back(made.facet);
}

}  // namespace kernel

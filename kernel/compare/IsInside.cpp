// The winding number along a ray in the direction of an axis, which runs an infinitely small step
// beside every edge and corner.

#include <algorithm>
#include <array>
#include <cmath>

#include "kernel/compare/SideOfPlane.h"
#include "kernel/compare/StockTree.h"
#include "kernel/sweep/ExactOrientation.h"

namespace kernel {
namespace {

constexpr std::size_t kWidth = FacetBoxes::kWidth;

struct Ray {
  Vec3 from;
  FacetBoxes::Place place;
  int axis;
  bool rises;

  int U() const { return (axis + 1) % 3; }
  int V() const { return (axis + 2) % 3; }
};

// Along the axis and in the direction in which the root's box ends soonest.
Ray ShortestRay(const FacetBoxes::Node& root, const Vec3& from, const FacetBoxes::Place& place) {
  Ray ray{from, place, 0, true};
  float shortest = std::numeric_limits<float>::infinity();
  for (int axis = 0; axis < 3; ++axis) {
    const float low = *std::min_element(root.low[axis], root.low[axis] + kWidth);
    const float high = *std::max_element(root.high[axis], root.high[axis] + kWidth);
    const float up = high - place.at[axis];
    const float down = place.at[axis] - low;
    if (up < shortest) {
      shortest = up;
      ray.axis = axis;
      ray.rises = true;
    }
    if (down < shortest) {
      shortest = down;
      ray.axis = axis;
      ray.rises = false;
    }
  }
  return ray;
}

// Which children's boxes the ray meets; how many. Boxes are rounded outwards by more than the place
// is off, as the place lies in the root's box wherever this is asked.
std::size_t FindMet(const FacetBoxes::Boxes& node, const Ray& ray,
                    std::array<std::uint32_t, kWidth>& children) {
  int met[kWidth];
  const float u = ray.place.at[ray.U()];
  const float v = ray.place.at[ray.V()];
  const float w = ray.place.at[ray.axis];
  const float* lowU = node.low[ray.U()];
  const float* highU = node.high[ray.U()];
  const float* lowV = node.low[ray.V()];
  const float* highV = node.high[ray.V()];
  for (std::size_t c = 0; c < kWidth; ++c) {
    met[c] = static_cast<int>(lowU[c] <= u) & static_cast<int>(u <= highU[c]) &
             static_cast<int>(lowV[c] <= v) & static_cast<int>(v <= highV[c]);
  }
  if (ray.rises) {
    const float* high = node.high[ray.axis];
    for (std::size_t c = 0; c < kWidth; ++c) met[c] &= static_cast<int>(w <= high[c]);
  } else {
    const float* low = node.low[ray.axis];
    for (std::size_t c = 0; c < kWidth; ++c) met[c] &= static_cast<int>(low[c] <= w);
  }
  std::size_t count = 0;
  for (std::uint32_t c = 0; c < kWidth; ++c) {
    children[count] = c;
    count += static_cast<std::size_t>(met[c]);
  }
  return count;
}

// What the facet adds to the winding number of the ray's origin.
int Step(const Corners& corners, const Ray& ray) {
  const int u = ray.U(), v = ray.V(), w = ray.axis;
  const auto [lowU, highU] = std::minmax({corners[0][u], corners[1][u], corners[2][u]});
  const auto [lowV, highV] = std::minmax({corners[0][v], corners[1][v], corners[2][v]});
  const Point2 point{ray.from[u], ray.from[v]};
  if (point.x < lowU || point.x > highU || point.y < lowV || point.y > highV) return 0;
  const auto [lowW, highW] = std::minmax({corners[0][w], corners[1][w], corners[2][w]});
  const double at = ray.from[w];
  if (ray.rises ? at > highW : at < lowW) return 0;
  std::array<Point2, 3> flat;
  for (std::size_t i = 0; i < 3; ++i) flat[i] = {corners[i][u], corners[i][v]};
  const int turn = OrientationSign(flat[0], flat[1], flat[2]);
  if (turn == 0) return 0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (ShiftedOrientationSign(flat[i], flat[(i + 1) % 3], point) != turn) return 0;
  }
  const bool beside = ray.rises ? at < lowW : at > highW;
  // A facet that turns counter-clockwise has its outer side where the axis points to.
  const bool below = beside ? ray.rises : SideOfPlane(corners, ray.from) * turn < 0;
  if (below != ray.rises) return 0;
  return ray.rises ? turn : -turn;
}

}  // namespace

bool StockTree::IsInside(const Vec3& point) const {
  const FacetBoxes::Node* nodes = m_boxes.Nodes().data();
  const FacetBoxes::Place place = m_boxes.PlaceOf(point);
  for (const float at : place.at) {
    if (!(std::abs(at) <= 1.0001F)) return false;
  }
  const Ray ray = ShortestRay(nodes[0], point, place);
  int winding = 0;
  std::array<std::uint32_t, kStack> stack;
  std::size_t depth = 0;
  stack[depth++] = 0;
  while (depth > 0) {
    const FacetBoxes::Node& node = nodes[stack[--depth]];
    std::array<std::uint32_t, kWidth> met;
    const std::size_t count = FindMet(node, ray, met);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t child = node.child[met[i]];
      if (!node.isLeaf[met[i]]) {
        stack[depth++] = child;
        continue;
      }
      const FacetBoxes::Leaf& leaf = m_boxes.Leaves()[child];
      std::array<std::uint32_t, kWidth> facets;
      const std::size_t facetCount = FindMet(leaf, ray, facets);
      for (std::size_t f = 0; f < facetCount; ++f) {
        winding += Step(m_corners[leaf.begin + facets[f]], ray);
      }
    }
  }
  return winding > 0;
}

}  // namespace kernel

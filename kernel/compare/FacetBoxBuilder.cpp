#include "kernel/compare/FacetBoxBuilder.h"

#include <array>

namespace kernel {
namespace {

constexpr std::size_t kBins = 16;
// Deeper than this, halves: sizes that fall by orders of magnitude could make a tree as deep as its
// facets are many.
constexpr std::size_t kUnevenDepth = 40;
constexpr float kMost = FacetBox::kMost;

struct Bin {
  FacetBox box;
  std::size_t count = 0;
};

// Where middles lie between the lowest and the highest one.
struct Binning {
  float lowest, factor;

  std::size_t BinOf(float middle) const {
    const auto bin = static_cast<std::size_t>((middle - lowest) * factor);
    return std::min(bin, kBins - 1);
  }
};

struct Cut {
  float cost = kMost;
  int axis = 0;
  std::size_t firstAbove = 0;  // bin
};

// The cheapest cut between two of the bins, by the surface of both sides' boxes.
Cut CheapestCut(const std::array<Bin, kBins>& bins, int axis) {
  std::array<float, kBins> costBelow{};
  FacetBox box;
  std::size_t count = 0;
  for (std::size_t i = 0; i + 1 < kBins; ++i) {
    if (bins[i].count > 0) box.Include(bins[i].box);
    count += bins[i].count;
    costBelow[i + 1] = count > 0 ? box.Area() * static_cast<float>(count) : kMost;
  }
  Cut cheapest;
  box = {};
  count = 0;
  for (std::size_t i = kBins - 1; i > 0; --i) {
    if (bins[i].count > 0) box.Include(bins[i].box);
    count += bins[i].count;
    if (count == 0) continue;
    const float cost = costBelow[i] + box.Area() * static_cast<float>(count);
    if (cost < cheapest.cost) cheapest = {cost, axis, i};
  }
  return cheapest;
}

void SetBox(FacetBoxes::Boxes& boxes, std::size_t c, const FacetBox& box) {
  for (int axis = 0; axis < 3; ++axis) {
    boxes.low[axis][c] = box.low[axis];
    boxes.high[axis][c] = box.high[axis];
  }
}

}  // namespace

FacetBox FacetBoxBuilder::Bounds(const Range& range) const {
  FacetBox bounds;
  for (std::size_t i = range.begin; i < range.end; ++i) bounds.Include(m_boxes[i]);
  return bounds;
}

std::size_t FacetBoxBuilder::Part(const Range& range) {
  FacetBox middles;
  for (std::size_t i = range.begin; i < range.end; ++i) {
    const FacetBox& box = m_boxes[i];
    const float middle[3] = {box.Middle(0), box.Middle(1), box.Middle(2)};
    middles.Include(middle);
  }
  std::array<Binning, 3> binnings;
  std::array<std::array<Bin, kBins>, 3> bins;
  for (int axis = 0; axis < 3; ++axis) {
    const float width = middles.high[axis] - middles.low[axis];
    binnings[static_cast<std::size_t>(axis)] = {middles.low[axis],
                                                width > 0 ? static_cast<float>(kBins) / width : 0};
  }
  for (std::size_t i = range.begin; i < range.end; ++i) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      Bin& bin = bins[axis][binnings[axis].BinOf(m_boxes[i].Middle(static_cast<int>(axis)))];
      bin.box.Include(m_boxes[i]);
      ++bin.count;
    }
  }
  Cut best;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const Cut cut = CheapestCut(bins[axis], static_cast<int>(axis));
    if (cut.cost < best.cost) best = cut;
  }
  // All middles in one bin: any halves are as good.
  if (best.firstAbove == 0) return range.begin + range.Size() / 2;
  const Binning& binning = binnings[static_cast<std::size_t>(best.axis)];
  const auto at = [&](std::size_t i) { return m_boxes.begin() + static_cast<std::ptrdiff_t>(i); };
  const auto middle = std::partition(at(range.begin), at(range.end), [&](const FacetBox& box) {
    return binning.BinOf(box.Middle(best.axis)) < best.firstAbove;
  });
  return static_cast<std::size_t>(middle - m_boxes.begin());
}

std::vector<FacetBoxBuilder::Open> FacetBoxBuilder::AddNode(const Range& range, std::size_t depth) {
  struct Child {
    Range range;
    FacetBox box;
  };
  std::array<Child, FacetBoxes::kWidth> children;
  children[0] = {range, Bounds(range)};
  std::size_t count = 1;
  while (count < FacetBoxes::kWidth) {
    std::size_t largest = count;
    for (std::size_t i = 0; i < count; ++i) {
      if (children[i].range.Size() <= FacetBoxes::kLeafSize) continue;
      if (largest == count || children[i].box.Area() > children[largest].box.Area()) largest = i;
    }
    if (largest == count) break;
    const Range parted = children[largest].range;
    const std::size_t middle =
        depth < kUnevenDepth ? Part(parted) : parted.begin + parted.Size() / 2;
    const Range below{parted.begin, middle};
    const Range above{middle, parted.end};
    children[largest] = {below, Bounds(below)};
    children[count++] = {above, Bounds(above)};
  }
  FacetBoxes::Node node{};
  std::vector<Open> open;
  for (std::size_t c = 0; c < FacetBoxes::kWidth; ++c) {
    SetBox(node, c, c < count ? children[c].box : FacetBox{});
    if (c >= count) continue;
    const Range& own = children[c].range;
    if (own.Size() <= FacetBoxes::kLeafSize) {
      node.isLeaf[c] = true;
      node.child[c] = static_cast<std::uint32_t>(m_leaves.size());
      AddLeaf(own);
    } else {
      open.push_back({m_nodes.size(), c, own, depth + 1});
    }
  }
  m_nodes.push_back(node);
  return open;
}

void FacetBoxBuilder::AddLeaf(const Range& range) {
  FacetBoxes::Leaf leaf{};
  leaf.begin = static_cast<std::uint32_t>(range.begin);
  leaf.end = static_cast<std::uint32_t>(range.end);
  for (std::size_t i = 0; i < FacetBoxes::kLeafSize; ++i) {
    SetBox(leaf, i, i < range.Size() ? m_boxes[range.begin + i] : FacetBox{});
  }
  m_leaves.push_back(leaf);
}

void FacetBoxBuilder::BuildBelow(const Open& open) {
  m_nodes[open.node].child[open.child] = static_cast<std::uint32_t>(m_nodes.size());
  for (const Open& below : AddNode(open.range, open.depth)) BuildBelow(below);
}

void FacetBoxBuilder::BuildAll(const Range& range, std::size_t depth) {
  for (const Open& open : AddNode(range, depth)) BuildBelow(open);
}

std::vector<FacetBoxBuilder::Open> FacetBoxBuilder::BuildTop(std::size_t wanted, std::size_t few) {
  std::vector<Open> open = AddNode({0, m_boxes.size()}, 0);
  while (!open.empty() && open.size() < wanted) {
    std::vector<Open> next;
    bool added = false;
    for (const Open& child : open) {
      if (child.range.Size() < few) {
        next.push_back(child);
        continue;
      }
      added = true;
      m_nodes[child.node].child[child.child] = static_cast<std::uint32_t>(m_nodes.size());
      for (const Open& below : AddNode(child.range, child.depth)) next.push_back(below);
    }
    open = std::move(next);
    if (!added) break;
  }
  return open;
}

}  // namespace kernel

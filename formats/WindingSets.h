#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace formats {

// Facets that hang together, and which of them wind the other way than the first facet of their
// set: disjoint sets in which every number knows its way relative to its parent.
class WindingSets {
 public:
  explicit WindingSets(std::size_t facets) : parent_(facets), turned_(facets, false) {
    std::iota(parent_.begin(), parent_.end(), 0U);
  }

  // Neighbours across an edge that two facets share. What facets of one set have said of each other
  // before stands: a surface with one side only contradicts itself.
  void Join(std::uint32_t a, std::uint32_t b, bool agree) {
    const Place placeOfA = Find(a);
    const Place placeOfB = Find(b);
    if (placeOfA.root == placeOfB.root) return;
    const std::uint32_t low = std::min(placeOfA.root, placeOfB.root);
    const std::uint32_t high = std::max(placeOfA.root, placeOfB.root);
    parent_[high] = low;
    turned_[high] = placeOfA.turned ^ placeOfB.turned ^ !agree;
  }

  // Fewest facets to turn over so that every set winds one way.
  std::size_t FewestToTurn() {
    std::vector<std::uint32_t> all(parent_.size(), 0);
    std::vector<std::uint32_t> turned(parent_.size(), 0);
    for (std::uint32_t facet = 0; facet < parent_.size(); ++facet) {
      const Place place = Find(facet);
      ++all[place.root];
      if (place.turned) ++turned[place.root];
    }
    std::size_t fewest = 0;
    for (std::size_t root = 0; root < all.size(); ++root) {
      fewest += std::min(turned[root], all[root] - turned[root]);
    }
    return fewest;
  }

 private:
  struct Place {
    std::uint32_t root;
    bool turned;  // against the root
  };

  Place Find(std::uint32_t facet) {
    bool turned = false;
    while (parent_[facet] != facet) {
      const std::uint32_t parent = parent_[facet];
      // The way to the grandparent is the sum of both steps; a root's own step is none.
      turned_[facet] = turned_[facet] ^ turned_[parent];
      parent_[facet] = parent_[parent];
      turned = turned ^ turned_[facet];
      facet = parent_[facet];
    }
    return {facet, turned};
  }

  std::vector<std::uint32_t> parent_;
  std::vector<bool> turned_;
};

}  // namespace formats

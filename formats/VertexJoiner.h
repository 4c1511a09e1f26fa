#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace formats {

// Numbers places: each new one is appended to `vertices`, one that is there already keeps its
// number. Coordinates are compared as numbers: 0 and -0 are the same place, NaN never is.
class VertexJoiner {
 public:
  // `vertices` is borrowed, starts empty, and is changed by nobody else meanwhile.
  explicit VertexJoiner(std::vector<std::array<double, 3>>& vertices);

  std::int32_t Number(const std::array<double, 3>& place);

 private:
  std::size_t SlotOf(const std::array<double, 3>& place) const;
  void Grow();

  std::vector<std::array<double, 3>>& vertices_;
  // Open addressing, a power of two in size, at most half full. It is only looked up, never walked,
  // so its order does not show in any result.
  std::vector<std::int32_t> table_;
};

}  // namespace formats

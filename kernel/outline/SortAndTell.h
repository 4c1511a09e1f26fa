#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>

namespace kernel {

// Sorts what may take a second or more. `tell` is called now and then; what it throws passes on and
// leaves the elements in any order.
template <typename Elements, typename Less>
void SortAndTell(Elements& elements, const std::function<void()>& tell, const Less& less) {
  constexpr std::uint32_t kTellInterval = 1U << 20;  // comparisons
  std::uint32_t count = 0;
  std::sort(elements.begin(), elements.end(), [&](const auto& a, const auto& b) {
    if (++count % kTellInterval == 0) tell();
    return less(a, b);
  });
}

}  // namespace kernel

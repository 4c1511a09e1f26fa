#pragma once

#include <cstddef>

namespace heal_test {

/// While it lives, the `n`-th allocation with operator new, on whatever thread, throws
/// std::bad_alloc; n = 0 only counts. One object at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(long n);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  /// Since this object was made.
  long Allocations() const;
};

}  // namespace heal_test

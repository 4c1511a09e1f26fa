#pragma once

#include <cstddef>

namespace kernel_test {

/// While it lives, the `n`-th allocation with operator new, on whatever thread, throws
/// std::bad_alloc; n = 0 only counts. One object at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(long n);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  /// Counts from here on, and fails at the `n`-th from here on.
  void Restart(long n);

  /// Since this object was made or restarted.
  long Allocations() const;
  /// Blocks allocated less blocks freed since this object was made.
  long Balance() const;
};

}  // namespace kernel_test

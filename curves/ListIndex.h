#pragma once

#include <memory>

#include "curves/SegmentLists.h"

/// Which list starts at a point. A later entry for the same point replaces the earlier one; a point
/// at which its list no longer starts keeps its entry.
class ListIndex {
 public:
  /// The list that starts at the point, SegmentLists::kNone when none does.
  int Find(int point) const {
    return m_lists == nullptr ? SegmentLists::kNone : m_lists.get()[point];
  }

  /// Enters every list under the start of its head, in their order. False, and nothing changed,
  /// when there is no memory.
  bool Enter(const SegmentLists& lists);

 private:
  std::unique_ptr<int[]> m_lists;  // by point number
};

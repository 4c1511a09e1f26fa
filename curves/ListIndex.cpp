#include "curves/ListIndex.h"

#include <algorithm>
#include <new>

#include "curves/Segment.h"

bool ListIndex::Enter(const SegmentLists& lists) {
  if (m_lists == nullptr) {
    m_lists.reset(new (std::nothrow) int[kMostPoints + 1]);
    if (m_lists == nullptr) return false;
    std::fill_n(m_lists.get(), kMostPoints + 1, SegmentLists::kNone);
  }
  for (int list = 0; list < lists.Count(); ++list) m_lists.get()[lists.Head(list).start] = list;
  return true;
}

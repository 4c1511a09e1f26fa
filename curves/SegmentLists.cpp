#include "curves/SegmentLists.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace {

// A copy with room for more; null when there is no memory.
template <class Item>
std::unique_ptr<Item[]> Grown(const std::unique_ptr<Item[]>& items, int count, int more) {
  const auto size = static_cast<std::size_t>(count) + static_cast<std::size_t>(more);
  std::unique_ptr<Item[]> grown(new (std::nothrow) Item[size]);
  if (grown != nullptr) std::copy_n(items.get(), count, grown.get());
  return grown;
}

}  // namespace

bool SegmentLists::Reserve(int records) {
  if (m_recordCount > std::numeric_limits<int>::max() - records) return false;
  std::unique_ptr<SegIpb[]> grownRecords = Grown(m_records, m_recordCount, records);
  if (grownRecords == nullptr) return false;
  std::unique_ptr<int[]> grownNext = Grown(m_next, m_recordCount, records);
  if (grownNext == nullptr) return false;
  std::unique_ptr<List[]> grownLists = Grown(m_lists, m_listCount, records);
  if (grownLists == nullptr) return false;
  m_records = std::move(grownRecords);
  m_next = std::move(grownNext);
  m_lists = std::move(grownLists);
  return true;
}

void SegmentLists::AddHead(int list, const SegIpb& record) {
  Of(list).head = NewRecord(record, Of(list).head);
}

void SegmentLists::AddTail(int list, const SegIpb& record) {
  const int number = NewRecord(record, kNone);
  Next(Of(list).tail) = number;
  Of(list).tail = number;
}

void SegmentLists::AddList(const SegIpb& record) {
  const int number = NewRecord(record, kNone);
  Of(m_listCount++) = {number, number};
}

void SegmentLists::CloseOff(int list) {
  At(Of(list).head).open = false;
  At(Of(list).tail).open = false;
}

int SegmentLists::NewRecord(const SegIpb& record, int next) {
  At(m_recordCount) = record;
  Next(m_recordCount) = next;
  return m_recordCount++;
}

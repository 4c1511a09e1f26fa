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
  // There are never more lists than records.
  if (m_nodeCount > std::numeric_limits<int>::max() - records) return false;
  std::unique_ptr<Node[]> nodes = Grown(m_nodes, m_nodeCount, records);
  if (nodes == nullptr) return false;
  std::unique_ptr<List[]> lists = Grown(m_lists, m_listCount, records);
  if (lists == nullptr) return false;
  m_nodes = std::move(nodes);
  m_lists = std::move(lists);
  return true;
}

void SegmentLists::AddHead(int list, const SegIpb& record) {
  Of(list).head = NewNode(record, Of(list).head);
}

void SegmentLists::AddTail(int list, const SegIpb& record) {
  const int node = NewNode(record, kNone);
  At(Of(list).tail).next = node;
  Of(list).tail = node;
}

void SegmentLists::AddList(const SegIpb& record) {
  const int node = NewNode(record, kNone);
  Of(m_listCount++) = {node, node};
}

void SegmentLists::CloseOff(int list) {
  At(Of(list).head).record.open = false;
  At(Of(list).tail).record.open = false;
}

int SegmentLists::NewNode(const SegIpb& record, int next) {
  At(m_nodeCount) = {record, next};
  return m_nodeCount++;
}

#include "curves/ListQueues.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

bool ListQueues::Make(int points, int lists) {
  m_roots.reset(new (std::nothrow) int[static_cast<std::size_t>(points)]);
  m_lists.reset(new (std::nothrow) Branches[static_cast<std::size_t>(lists)]);
  if (m_roots == nullptr || m_lists == nullptr) return false;
  std::fill_n(m_roots.get(), points, kNone);
  return true;
}

void ListQueues::Push(int point, int list) {
  Of(list) = {kNone, kNone};
  Root(point) = Merge(Root(point), list);
}

void ListQueues::PopLowest(int point) {
  const Branches& lowest = Of(Root(point));
  Root(point) = Merge(lowest.left, lowest.right);
}

int ListQueues::Merge(int a, int b) {
  int root = kNone;
  int* place = &root;
  while (a != kNone && b != kNone) {
    if (b < a) std::swap(a, b);
    *place = a;
    Branches& branches = Of(a);
    a = branches.right;
    branches.right = branches.left;
    place = &branches.left;
  }
  *place = a != kNone ? a : b;
  return root;
}

#pragma once

#include <memory>

/// For every point a queue of lists, the one with the lowest number first. A list stands in one
/// queue at most.
///
/// The queues are skew heaps (D. D. Sleator, R. E. Tarjan, "Self-Adjusting Heaps", SIAM Journal on
/// Computing 15, 1986) threaded through one array: n changes cost n log n steps at worst, and no
/// allocation.
class ListQueues {
 public:
  static constexpr int kNone = -1;

  /// Queues for points 0 to `points` - 1 and lists 0 to `lists` - 1, all empty. False when there is
  /// no memory.
  bool Make(int points, int lists);

  /// kNone for an empty queue.
  int Lowest(int point) const { return Root(point); }
  void Push(int point, int list);
  /// The queue must not be empty.
  void PopLowest(int point);

 private:
  struct Branches {
    int left;
    int right;
  };

  int& Root(int point) const { return m_roots.get()[point]; }
  Branches& Of(int list) const { return m_lists.get()[list]; }
  int Merge(int a, int b);

  std::unique_ptr<int[]> m_roots;       // by point
  std::unique_ptr<Branches[]> m_lists;  // by list
};

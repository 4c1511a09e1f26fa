#include "curves/GroupSegments.h"

#include "curves/ListQueues.h"
#include "curves/SegmentLists.h"

namespace {

// The lists with the points where they can be continued. A list's head changes only when it is the
// lowest one that starts there, its tail only when it is the lowest that ends there; so the queues
// need no other removal than that of their first.
class Grouping {
 public:
  explicit Grouping(SegmentLists* lists) : m_lists(lists) {}

  bool Prepare(int more) {
    const int most = m_lists->Count() + more;
    if (!m_byStart.Make(kMostPoints + 1, most) || !m_byEnd.Make(kMostPoints + 1, most)) {
      return false;
    }
    for (int list = 0; list < m_lists->Count(); ++list) Enter(list);
    return true;
  }

  void Place(const SegIpb& record) {
    const int before = m_byStart.Lowest(record.end);
    const int behind = m_byEnd.Lowest(record.start);
    if (before == ListQueues::kNone && behind == ListQueues::kNone) {
      m_lists->AddList(record);
      Enter(m_lists->Count() - 1);
    } else if (behind == ListQueues::kNone || (before != ListQueues::kNone && before <= behind)) {
      // The same list on both sides: its head comes first.
      m_lists->AddHead(before, record);
      m_byStart.PopLowest(record.end);
      m_byStart.Push(record.start, before);
    } else {
      m_lists->AddTail(behind, record);
      m_byEnd.PopLowest(record.start);
      m_byEnd.Push(record.end, behind);
    }
  }

 private:
  void Enter(int list) {
    m_byStart.Push(m_lists->Head(list).start, list);
    m_byEnd.Push(m_lists->Tail(list).end, list);
  }

  SegmentLists* m_lists;
  ListQueues m_byStart;
  ListQueues m_byEnd;
};

}  // namespace

bool GroupSegments(const Segment* segments, int count, SegmentLists* lists) {
  if (count == 0) return true;
  if (!lists->Reserve(count)) return false;
  Grouping grouping(lists);
  if (!grouping.Prepare(count)) return false;
  for (int i = 0; i < count; ++i) grouping.Place({segments[i].start, segments[i].end, i, true});
  return true;
}

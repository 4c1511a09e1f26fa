// How CurveXferQZ makes curves of its lists of segments.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

#include "curves/CurveXferQZ.h"

namespace {

constexpr int kSentinel = -999999;

}  // namespace

// The lists from which no walk comes back to where it began. A walk that reaches one of them need
// not go on, since it is dropped whatever its length: without this many open chains that run into
// one long chain would take its length each. That holds only while all lists come of the segments
// as they are now.
class CurveXferQZ::OpenEnds {
 public:
  bool Make(int lists) {
    m_known.reset(new (std::nothrow) bool[static_cast<std::size_t>(lists)]());
    return m_known != nullptr;
  }

  bool Has(int list) const { return m_known != nullptr && m_known.get()[list]; }

  // What a walk from `key` went through before it ended.
  void Note(int key, const SegmentLists& lists, const ListIndex& index) {
    if (m_known == nullptr) return;
    for (int list = index.Find(key); list != SegmentLists::kNone && !Has(list);
         list = index.Find(lists.Tail(list).end)) {
      m_known.get()[list] = true;
    }
  }

 private:
  std::unique_ptr<bool[]> m_known;  // by list; null when nothing is noted
};

bool CurveXferQZ::JoinSegments(bool listsAreNew) {
  m_curveCount = 0;
  if (!MakeCurveTable() || !MakeCurveBuffer()) return false;
  OpenEnds openEnds;
  if (listsAreNew && !openEnds.Make(m_lists.Count())) return false;
  // Once through is enough: what is closed off stays so.
  for (int list = 0; list < m_lists.Count(); ++list) {
    if (!m_lists.Head(list).open) continue;
    // This one as well, although the walk may lead past it: the index may have another list with
    // the same start, and then it would be found again for ever.
    m_lists.CloseOff(list);
    if (!CollectCurve(m_lists.Head(list).start, &openEnds)) return false;
    if (TestCurve() == kClosed && !StoreCurve()) return false;
  }
  return true;
}

bool CurveXferQZ::MakeCurveTable() {
  constexpr int kFirstCapacity = 100;
  if (m_curveCapacity > 0) return true;
  m_curves.reset(new (std::nothrow) Curve[kFirstCapacity]);
  if (m_curves == nullptr) return false;
  m_curveCapacity = kFirstCapacity;
  return true;
}

bool CurveXferQZ::MakeCurveBuffer() {
  const auto count = static_cast<std::size_t>(m_segmentCount);
  m_curveBuffer.reset(new (std::nothrow) int[count + 10]);
  if (m_curveBuffer == nullptr) return false;
  std::fill_n(m_curveBuffer.get(), count, -1);
  m_curveBuffer[count] = kSentinel;
  return true;
}

bool CurveXferQZ::CollectCurve(int key, OpenEnds* openEnds) {
  const int firstKey = key;
  m_curveLength = 0;
  for (int list = m_index.Find(key); list != SegmentLists::kNone; list = m_index.Find(key)) {
    if (openEnds->Has(list)) break;
    if (!AppendList(list)) return false;
    key = m_lists.Tail(list).end;
    if (m_firstPoint == m_lastPoint) return true;
  }
  openEnds->Note(firstKey, m_lists, m_index);
  return true;
}

bool CurveXferQZ::AppendList(int list) {
  if (m_curveBuffer.get()[m_curveLength] == kSentinel) return false;
  // As soon as its head is in, even if the rest is not to fit.
  m_lists.CloseOff(list);
  return m_lists.ForEach(list, [this](const SegIpb& record) {
    int* place = m_curveBuffer.get() + m_curveLength;
    if (*place == kSentinel) return false;
    if (m_curveLength == 0) m_firstPoint = record.start;
    m_lastPoint = record.end;
    *place = record.segment;
    ++m_curveLength;
    return true;
  });
}

CurveXferQZ::Closure CurveXferQZ::TestCurve() const {
  if (m_curveLength < 2) return kTooShort;
  const int* positions = m_curveBuffer.get();
  double sum = 0.0;
  for (int i = 0; i < m_curveLength; ++i) {
    sum += SquaredLength(SegmentAt(positions[i]));
    // Asked this way round: a sum that is no number exceeds nothing.
    if (!(sum > m_closureThreshold)) continue;
    const int last = positions[m_curveLength - 1];
    return SegmentAt(positions[0]).start == SegmentAt(last).end ? kClosed : kOpen;
  }
  return kTooSmall;
}

double CurveXferQZ::SquaredLength(const Segment& segment) const {
  const Point& a = m_points.get()[segment.start - 1];
  const Point& b = m_points.get()[segment.end - 1];
  const double x = b.x - a.x;
  const double y = b.y - a.y;
  const double z = b.z - a.z;
  return x * x + y * y + z * z;
}

bool CurveXferQZ::StoreCurve() {
  if (m_curveCount == m_curveCapacity) {
    const int capacity = 2 * m_curveCapacity;
    std::unique_ptr<Curve[]> grown(new (std::nothrow) Curve[static_cast<std::size_t>(capacity)]);
    if (grown == nullptr) return false;
    std::move(m_curves.get(), m_curves.get() + m_curveCount, grown.get());
    m_curves = std::move(grown);
    m_curveCapacity = capacity;
  }
  Curve& curve = m_curves.get()[m_curveCount];
  curve.segments.reset(new (std::nothrow) int[static_cast<std::size_t>(m_curveLength)]);
  if (curve.segments == nullptr) return false;
  std::copy_n(m_curveBuffer.get(), m_curveLength, curve.segments.get());
  curve.count = m_curveLength;
  ++m_curveCount;
  return true;
}

#pragma once

#include <memory>

#include "curves/CurveTransfer.h"
#include "curves/ListIndex.h"
#include "curves/Segment.h"
#include "curves/SegmentLists.h"
#include "platform/SystemTypes.h"

/// A channel whose segments end up, joined into closed curves, in a binary curves file. What is
/// received is held in memory until Close; then curves that do not close, have a single segment or
/// are too small (see the closure threshold) are dropped without a word.
class CurveXferQZ final : public CurveTransfer {
 public:
  /// Creates the file and writes its header. `mode` 0 makes a file of plain curves, 1 the tree
  /// variant, anything else an empty file. Without a header no point is taken.
  CurveXferQZ(int mode, const char* fileName);
  CurveXferQZ(const CurveXferQZ&) = delete;
  CurveXferQZ& operator=(const CurveXferQZ&) = delete;
  /// Without Close the file is left with nothing but its header. Not virtual, like the interface.
  ~CurveXferQZ();

  /// Returns 0. The file, and what an earlier Close has put into lists, stay.
  int Reset() override;
  /// Returns 0.
  int BeginGroup() override;
  void EndGroup() override;
  /// Takes kMostPoints points; null for each further one, and when there is no memory.
  const int* AddPoint(const double* xyz) override;
  /// Null when there is no memory, and for handles that name no point of this channel.
  void* AddSegment(const int* from, const int* to) override;
  /// Writes points and curves; the file stays open. 0 when a write fails, when there is no segment,
  /// no memory, or when a curve comes back to a list that it holds already without closing; what
  /// was written before stays in the file. Otherwise 1, but for one thing: it is the result of the
  /// last curve that counts, and that is 0 when its segments do not follow one another.
  /// The lists stay for a second Close, which adds the segments to them once more.
  int Close() override;

 private:
  struct Point {
    double x, y, z;
  };
  struct Curve {
    std::unique_ptr<int[]> segments;  // positions in the channel's array
    int count = 0;
  };
  enum Closure { kOpen, kClosed, kTooSmall = 3, kTooShort };
  class OpenEnds;
  class Output;

  bool WriteHeader();
  bool GrowPoints();
  bool GrowSegments();
  bool WritePoints(Output* out);
  int WriteCurves(Output* out) const;
  int WriteCurve(const Curve& curve, Output* out) const;

  /// Whether the curves could be collected; none at all is a success, too.
  bool JoinSegments(bool listsAreNew);
  bool MakeCurveTable();
  bool MakeCurveBuffer();
  /// Follows the lists from the one that the index has for `key` until the curve closes or there is
  /// none to follow; false when there would be more segments than the channel has.
  bool CollectCurve(int key, OpenEnds* openEnds);
  bool AppendList(int list);
  Closure TestCurve() const;
  double SquaredLength(const Segment& segment) const;
  bool StoreCurve();

  const Segment& SegmentAt(int position) const { return m_segments.get()[position]; }

  std::unique_ptr<Point[]> m_points;
  std::unique_ptr<int[]> m_pointNumbers;  // entry i holds i; its address is the point's handle
  std::unique_ptr<Segment[]> m_segments;
  std::unique_ptr<Curve[]> m_curves;
  std::unique_ptr<int[]> m_curveBuffer;  // positions of the curve being joined, and a sentinel
  int m_firstPoint = 0;                  // of the curve being joined
  int m_lastPoint = 0;
  SegmentLists m_lists;
  ListIndex m_index;
  int m_pointNumberCapacity = 0;
  int m_pointCapacity = 0;
  int m_segmentCapacity = 0;
  int m_curveCapacity = 0;
  int m_growthStep = 5000;
  int m_tree[2] = {0, 0};  // written with each curve of the tree variant; nothing sets them
  int m_pointCount = 0;
  int m_segmentCount = 0;
  int m_curveCount = 0;
  int m_curveLength = 0;  // of the curve being joined
  int m_beginGroupCount = 0;
  int m_endGroupCount = 0;
  int m_mode;
  FILE* m_stream;
  /// A curve counts when the sum of its segments' squared lengths (not the square of the sum) is
  /// above this: the square of ten tolerances of the host.
  double m_closureThreshold = 0.0;
};

#include "curves/CurveXferQZ.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "blocks/BlockWriter.h"
#include "curves/GroupSegments.h"
#include "platform/QZCore.h"

namespace {

constexpr char kSourceUnit[] = "CurveXferQZ";
constexpr int kPlainCurves = 0;
constexpr int kTreeCurves = 1;

const char* HeaderOf(int mode) {
  return mode == kTreeCurves ? "binary tree_curves" : "binary curves";
}

}  // namespace

// Buffers what goes to the file; a channel whose file could not be created takes nothing.
class CurveXferQZ::Output {
 public:
  explicit Output(FILE* stream) : m_writer(stream), m_exists(stream != nullptr) {}

  template <class Value>
  bool Write(const Value& value) {
    return Write(&value, sizeof value);
  }
  bool Write(const void* from, std::size_t size) { return m_exists && m_writer.Write(from, size); }
  bool Flush() { return m_exists && m_writer.Flush(); }

 private:
  BlockWriter m_writer;
  bool m_exists;
};

CurveXferQZ::CurveXferQZ(int mode, const char* fileName)
    : m_mode(mode), m_stream(m_fopen(kSourceUnit, __LINE__, fileName, "wb")) {
  if (m_stream == nullptr) return;
  if (mode != kPlainCurves && mode != kTreeCurves) return;
  if (!WriteHeader()) return;
  m_pointNumbers.reset(new (std::nothrow) int[kMostPoints]);
  if (m_pointNumbers != nullptr) m_pointNumberCapacity = kMostPoints;
  m_closureThreshold = (10.0 * tol) * (10.0 * tol);
}

CurveXferQZ::~CurveXferQZ() {
  if (m_stream != nullptr) m_fclose(kSourceUnit, __LINE__, m_stream);
}

int CurveXferQZ::Reset() {
  m_pointCount = 0;
  m_segmentCount = 0;
  return 0;
}

int CurveXferQZ::BeginGroup() {
  ++m_beginGroupCount;
  return 0;
}

void CurveXferQZ::EndGroup() { ++m_endGroupCount; }

const int* CurveXferQZ::AddPoint(const double* xyz) {
  if (m_pointCount >= m_pointCapacity && !GrowPoints()) return nullptr;
  if (m_pointCount >= m_pointCapacity || m_pointCount >= m_pointNumberCapacity) return nullptr;
  m_points.get()[m_pointCount] = {xyz[0], xyz[1], xyz[2]};
  int* number = m_pointNumbers.get() + m_pointCount;
  *number = m_pointCount++;
  return number;
}

void* CurveXferQZ::AddSegment(const int* from, const int* to) {
  const auto isPoint = [this](const int* handle) {
    return handle != nullptr && *handle >= 0 &&
           *handle < std::min(m_pointCapacity, m_pointNumberCapacity);
  };
  if (!isPoint(from) || !isPoint(to)) return nullptr;
  if (m_segmentCount >= m_segmentCapacity / 2 && !GrowSegments()) return nullptr;
  Segment* segment = m_segments.get() + m_segmentCount++;
  *segment = {*from + 1, *to + 1};
  return segment;
}

int CurveXferQZ::Close() {
  Output out(m_stream);
  if (!WritePoints(&out)) return 0;
  m_pointCount = 0;

  const bool listsAreNew = m_lists.Count() == 0;
  if (!GroupSegments(m_segments.get(), m_segmentCount, &m_lists) || !m_index.Enter(m_lists)) {
    return 0;
  }
  if (m_segmentCount < 1 || !JoinSegments(listsAreNew)) return 0;
  const int result = WriteCurves(&out);
  return out.Flush() ? result : 0;
}

bool CurveXferQZ::WriteHeader() {
  const char* header = HeaderOf(m_mode);
  const std::size_t size = std::strlen(header);
  return std::fwrite(header, 1, size, m_stream) == size;
}

bool CurveXferQZ::GrowPoints() {
  const int capacity = m_pointCount + m_growthStep;
  // Zeroed, so that a handle kept from before a Reset names a point in any case.
  std::unique_ptr<Point[]> grown(new (std::nothrow) Point[static_cast<std::size_t>(capacity)]());
  if (grown == nullptr) return false;
  std::copy_n(m_points.get(), m_pointCount, grown.get());
  m_points = std::move(grown);
  m_pointCapacity = capacity;
  return true;
}

bool CurveXferQZ::GrowSegments() {
  // Twice what would do; and the more there are, the larger the step, so that a million segments
  // are not copied two hundred times.
  const long long step = std::max(m_growthStep, m_segmentCount);
  const long long capacity = 2 * (m_segmentCount + step);
  if (capacity > std::numeric_limits<int>::max()) return false;
  std::unique_ptr<Segment[]> grown(new (std::nothrow) Segment[static_cast<std::size_t>(capacity)]);
  if (grown == nullptr) return false;
  std::copy_n(m_segments.get(), m_segmentCount, grown.get());
  m_segments = std::move(grown);
  m_segmentCapacity = static_cast<int>(capacity);
  return true;
}

bool CurveXferQZ::WritePoints(Output* out) {
  if (!out->Write(m_pointCount) || !out->Write(m_segmentCount)) return false;
  const std::size_t size = static_cast<std::size_t>(m_pointCount) * sizeof(Point);
  if (size > 0 && !out->Write(m_points.get(), size)) return false;
  return out->Flush();
}

int CurveXferQZ::WriteCurves(Output* out) const {
  // Without a curve this is the result of the joining; otherwise that of the last curve, whatever
  // became of those before it.
  int result = 1;
  for (int i = 0; i < m_curveCount; ++i) result = WriteCurve(m_curves.get()[i], out);
  return result;
}

int CurveXferQZ::WriteCurve(const Curve& curve, Output* out) const {
  if (!out->Write(curve.count)) return 0;
  if (m_mode == kTreeCurves && !out->Write(m_tree)) return 0;
  const int* positions = curve.segments.get();
  for (int i = 0; i < curve.count; ++i) {
    if (!out->Write(SegmentAt(positions[i]))) return 0;
    if (i > 0 && SegmentAt(positions[i]).start != SegmentAt(positions[i - 1]).end) return 0;
  }
  return 1;
}

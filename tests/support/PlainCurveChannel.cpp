#include "support/PlainCurveChannel.h"

#include <cmath>
#include <cstring>

namespace support {

PlainCurveChannel::PlainCurveChannel(int mode, const char* fileName, double tolerance)
    : m_mode(mode),
      m_file(std::fopen(fileName, "wb")),
      m_threshold((10.0 * tolerance) * (10.0 * tolerance)) {
  const char* header = mode == 1 ? "binary tree_curves" : "binary curves";
  if (m_file != nullptr) Write(header, std::strlen(header));
}

PlainCurveChannel::~PlainCurveChannel() {
  if (m_file != nullptr) std::fclose(m_file);
}

int PlainCurveChannel::Reset() {
  m_pointCount = 0;
  m_segmentCount = 0;
  return 0;
}

const int* PlainCurveChannel::AddPoint(const double* xyz) {
  if (m_pointCount == 60000) return nullptr;
  if (m_pointCount == m_points.size()) {
    m_points.emplace_back();
    m_numbers.emplace_back();
  }
  m_points[m_pointCount] = {xyz[0], xyz[1], xyz[2]};
  m_numbers[m_pointCount] = static_cast<int>(m_pointCount);
  return &m_numbers[m_pointCount++];
}

void* PlainCurveChannel::AddSegment(const int* from, const int* to) {
  // What a Reset leaves behind stays readable: lists may still refer to it.
  if (m_segmentCount == m_segments.size()) m_segments.emplace_back();
  m_segments[m_segmentCount] = {*from + 1, *to + 1};
  return &m_segments[m_segmentCount++];
}

int PlainCurveChannel::Close() {
  if (m_file == nullptr) return 0;
  const auto points = static_cast<std::int32_t>(m_pointCount);
  const auto segments = static_cast<std::int32_t>(m_segmentCount);
  if (!Write(&points, 4) || !Write(&segments, 4)) return 0;
  for (std::size_t i = 0; i < m_pointCount; ++i) {
    if (!Write(m_points[i].data(), 24)) return 0;
  }
  m_pointCount = 0;
  Group();
  if (m_segmentCount < 1 || !Join()) return 0;
  int result = 1;
  for (const auto& curve : m_curves) result = WriteCurve(curve);
  return result;
}

void PlainCurveChannel::Group() {
  for (std::size_t i = 0; i < m_segmentCount; ++i) {
    Offer({m_segments[i].first, m_segments[i].second, static_cast<int>(i), true});
  }
  for (std::size_t i = 0; i < m_lists.size(); ++i) m_index[m_lists[i].front().start] = i;
}

void PlainCurveChannel::Offer(const Record& record) {
  for (List& list : m_lists) {
    if (record.end == list.front().start) {
      list.push_front(record);
      return;
    }
    if (record.start == list.back().end) {
      list.push_back(record);
      return;
    }
  }
  m_lists.push_back({record});
}

bool PlainCurveChannel::Join() {
  m_curves.clear();
  for (;;) {
    List* first = nullptr;
    for (List& list : m_lists) {
      if (!list.front().open) continue;
      first = &list;
      break;
    }
    if (first == nullptr) return true;
    first->front().open = false;
    first->back().open = false;
    std::vector<int> curve;
    if (!Follow(first->front().start, &curve)) return false;
    if (Test(curve) == 1) m_curves.push_back(curve);
  }
}

bool PlainCurveChannel::Follow(int key, std::vector<int>* curve) {
  int firstPoint = 0;
  int lastPoint = 0;
  for (;;) {
    const auto found = m_index.find(key);
    if (found == m_index.end()) return true;
    List& list = m_lists[found->second];
    for (Record& record : list) {
      if (curve->size() == m_segmentCount) return false;
      if (&record == &list.front() || &record == &list.back()) record.open = false;
      if (curve->empty()) firstPoint = record.start;
      lastPoint = record.end;
      curve->push_back(record.segment);
    }
    key = list.back().end;
    if (firstPoint == lastPoint) return true;
  }
}

int PlainCurveChannel::Test(const std::vector<int>& curve) const {
  if (curve.size() < 2) return 4;
  const auto segment = [&](int position) { return m_segments[static_cast<std::size_t>(position)]; };
  double sum = 0;
  for (const int position : curve) {
    const auto& a = m_points[static_cast<std::size_t>(segment(position).first) - 1];
    const auto& b = m_points[static_cast<std::size_t>(segment(position).second) - 1];
    sum += (b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1]) +
           (b[2] - a[2]) * (b[2] - a[2]);
    if (sum > m_threshold) return segment(curve[0]).first == segment(curve.back()).second ? 1 : 0;
  }
  return 3;
}

int PlainCurveChannel::WriteCurve(const std::vector<int>& curve) {
  const auto count = static_cast<std::int32_t>(curve.size());
  if (!Write(&count, 4)) return 0;
  const std::int32_t tree[2] = {0, 0};
  if (m_mode == 1 && (!Write(&tree[0], 4) || !Write(&tree[1], 4))) return 0;
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const auto& segment = m_segments[static_cast<std::size_t>(curve[i])];
    if (!Write(&segment.first, 4) || !Write(&segment.second, 4)) return 0;
    if (i == 0) continue;
    if (segment.first != m_segments[static_cast<std::size_t>(curve[i - 1])].second) return 0;
  }
  return 1;
}

}  // namespace support

#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "curves/CurveTransfer.h"

namespace support {

/// The curve channel as plainly as it can be written: lists are asked one after the other, walks go
/// all the way, every field is a write of its own. Only for comparison: it takes the square of the
/// number of segments and more.
class PlainCurveChannel : public CurveTransfer {
 public:
  PlainCurveChannel(int mode, const char* fileName, double tolerance);
  PlainCurveChannel(const PlainCurveChannel&) = delete;
  PlainCurveChannel& operator=(const PlainCurveChannel&) = delete;
  ~PlainCurveChannel();

  int Reset() override;
  const int* AddPoint(const double* xyz) override;
  void* AddSegment(const int* from, const int* to) override;
  int Close() override;

  /// Writes what is still in the stream's buffer.
  void Finish() { std::fflush(m_file); }

 private:
  struct Record {
    int start, end, segment;
    bool open;
  };
  using List = std::list<Record>;

  bool Write(const void* from, std::size_t size) { return std::fwrite(from, size, 1, m_file) == 1; }
  void Group();
  void Offer(const Record& record);
  bool Join();
  bool Follow(int key, std::vector<int>* curve);
  int Test(const std::vector<int>& curve) const;
  int WriteCurve(const std::vector<int>& curve);

  int m_mode;
  std::FILE* m_file;
  double m_threshold;
  std::vector<std::array<double, 3>> m_points;
  std::size_t m_pointCount = 0;
  std::deque<int> m_numbers;  // a deque, since handles point into it
  std::vector<std::pair<int, int>> m_segments;
  std::size_t m_segmentCount = 0;
  std::vector<List> m_lists;
  std::map<int, std::size_t> m_index;
  std::vector<std::vector<int>> m_curves;
};

}  // namespace support

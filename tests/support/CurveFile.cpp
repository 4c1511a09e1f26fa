#include "support/CurveFile.h"

#include "support/FileBuilder.h"

namespace support {

Outline Square(double side) {
  return {{{0, 0, 0}, {side, 0, 0}, {side, side, 0}, {0, side, 0}},
          {{1, 2}, {2, 3}, {3, 4}, {4, 1}}};
}

std::string CurveFileHeader(int mode) { return mode == 1 ? "binary tree_curves" : "binary curves"; }

std::string CurveFileBytes(const CurveFile& file) {
  FileBuilder bytes;
  bytes.Text(CurveFileHeader(file.mode));
  bytes.Int32(static_cast<std::int64_t>(file.points.size())).Int32(file.segmentCount);
  for (const auto& point : file.points) bytes.Doubles({point[0], point[1], point[2]});
  for (const auto& curve : file.curves) {
    bytes.Int32(static_cast<std::int64_t>(curve.size()));
    if (file.mode == 1) bytes.Int32(0).Int32(0);
    for (const auto& [start, end] : curve) bytes.Int32(start).Int32(end);
  }
  return bytes.Bytes();
}

}  // namespace support

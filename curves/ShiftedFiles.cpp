#include "curves/ShiftedFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "platform/QZCore.h"
#include "platform/files.h"

namespace {

constexpr char kSourceUnit[] = "QZTUtlA";
constexpr std::size_t kNoHeader = 0;
constexpr std::size_t kSurfaceHeader = 14;  // "binary surface"
constexpr std::size_t kCurvesHeader = 13;   // "binary curves"
constexpr std::size_t kTreeHeader = 18;     // "binary tree_curves"
constexpr std::size_t kLongestHeader = kTreeHeader;
constexpr std::size_t kPointsInBlock = 2048;

struct Point {
  double xyz[3];
};
static_assert(sizeof(Point) == 24);

bool ReadPointCount(FILE* stream, std::size_t headerSize, std::int32_t* points) {
  char header[kLongestHeader];
  std::int32_t others = 0;
  return std::fread(header, 1, headerSize, stream) == headerSize &&
         std::fread(points, sizeof *points, 1, stream) == 1 &&
         std::fread(&others, sizeof others, 1, stream) == 1;
}

template <class Change>
bool RewritePoints(FILE* stream, std::size_t start, std::int32_t count, Change change) {
  Point block[kPointsInBlock];
  auto place = static_cast<long long>(start);
  auto left = static_cast<std::size_t>(std::max(count, 0));
  while (left > 0) {
    const std::size_t wanted = std::min(left, kPointsInBlock);
    // Bytes and not points: of a point that is not all there nothing is changed.
    const std::size_t whole = std::fread(block, 1, wanted * sizeof(Point), stream) / sizeof(Point);
    for (std::size_t i = 0; i < whole; ++i) change(block[i].xyz);
    if (SeekStdFile(stream, place) != 0) return false;
    const bool written = std::fwrite(block, sizeof(Point), whole, stream) == whole;
    place += static_cast<long long>(whole * sizeof(Point));
    // A seek stands between writing and reading. Without one nothing may wait in a stream that is
    // left open: in the end it would go over what was restored meanwhile.
    if (!written || SeekStdFile(stream, place) != 0) {
      std::fflush(stream);
      return false;
    }
    if (whole < wanted) return false;
    left -= whole;
  }
  return true;
}

template <class Change>
bool RewriteFile(std::size_t headerSize, const char* fileName, Change change) {
  bool status = true;
  FILE* stream = m_fopen_hl(kSourceUnit, __LINE__, GetTempDirectory(), fileName, "rb+", &status);
  if (stream == nullptr) return false;
  // No owner for the stream, on purpose: what goes wrong from here on leaves it open.
  std::int32_t count = 0;
  if (headerSize == kNoHeader || !ReadPointCount(stream, headerSize, &count)) return false;
  if (!RewritePoints(stream, headerSize + 2 * sizeof count, count, change)) return false;
  m_fclose(kSourceUnit, __LINE__, stream);
  return true;
}

bool Restore(std::size_t headerSize, bool scaled, double s, const double* c, const char* fileName) {
  return RewriteFile(headerSize, fileName, [=](double* xyz) {
    for (int axis = 0; axis < 3; ++axis) {
      if (scaled) xyz[axis] /= s;
      xyz[axis] += c[axis];
    }
  });
}

std::size_t CurvesHeader(int mode) {
  if (mode == 0) return kCurvesHeader;
  return mode == 1 ? kTreeHeader : kNoHeader;
}

}  // namespace

bool ShiftSurfaceFile(bool scaled, double s, const double* c, const char* fileName) {
  return RewriteFile(kSurfaceHeader, fileName, [=](double* xyz) {
    for (int axis = 0; axis < 3; ++axis) {
      xyz[axis] -= c[axis];
      if (scaled) xyz[axis] *= s;
    }
  });
}

bool RestoreSurfaceFile(bool scaled, double s, const double* c, const char* fileName) {
  return Restore(kSurfaceHeader, scaled, s, c, fileName);
}

bool RestoreCurveFile(int mode, bool scaled, double s, const double* c, const char* fileName) {
  return Restore(CurvesHeader(mode), scaled, s, c, fileName);
}

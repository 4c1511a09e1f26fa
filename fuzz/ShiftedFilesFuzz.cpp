// Any bytes as a file whose points are moved, in each of the four ways: only points change, and
// only whole ones.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "InputFile.h"
#include "curves/ShiftedFiles.h"
#include "platform/QZCore.h"

namespace {

constexpr double kCentre[3] = {1000.5, -3.25, 17};
constexpr double kScale = 0.78;

// What the code under test leaves open, as it must.
FILE* g_open = nullptr;

struct Way {
  std::size_t header;
  bool back;
};
constexpr Way kWays[] = {{14, false}, {14, true}, {13, true}, {18, true}};

bool Rewrite(unsigned way, bool scaled, const char* name) {
  if (way == 0) return ShiftSurfaceFile(scaled, kScale, kCentre, name);
  if (way == 1) return RestoreSurfaceFile(scaled, kScale, kCentre, name);
  return RestoreCurveFile(static_cast<int>(way) - 2, scaled, kScale, kCentre, name);
}

double Changed(const Way& way, bool scaled, double p, std::size_t axis) {
  if (!way.back) return scaled ? (p - kCentre[axis]) * kScale : p - kCentre[axis];
  return (scaled ? p / kScale : p) + kCentre[axis];
}

// The file as it must be then; whether all announced points were there.
bool Expect(const Way& way, bool scaled, std::string* bytes) {
  if (bytes->size() < way.header + 8) return false;
  std::int32_t count = 0;
  std::memcpy(&count, bytes->data() + way.header, 4);
  std::size_t place = way.header + 8;
  for (std::int32_t i = 0; i < count; ++i) {
    if (bytes->size() - place < 24) return false;
    for (std::size_t axis = 0; axis < 3; ++axis, place += 8) {
      double p = 0;
      std::memcpy(&p, bytes->data() + place, 8);
      p = Changed(way, scaled, p, axis);
      std::memcpy(bytes->data() + place, &p, 8);
    }
  }
  return true;
}

std::string BytesOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

CString GetTempDirectory() { return ""; }

FILE* m_fopen_hl(const char*, int, const char*, const char* name, const char* mode, bool* status) {
  g_open = std::fopen(name, mode);
  *status = g_open != nullptr;
  return g_open;
}

void m_fclose(const char*, int, FILE* stream) {
  std::fclose(stream);
  g_open = nullptr;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("points.tmp");
  if (size == 0) return 0;
  const unsigned way = data[0] % 4;
  const bool scaled = (data[0] & 4) != 0;
  file.Write(data + 1, size - 1);
  std::string expected(data + 1, data + size);
  const bool whole = Expect(kWays[way], scaled, &expected);
  const bool rewritten = Rewrite(way, scaled, file.Path().c_str());
  const bool leftOpen = g_open != nullptr;
  // Read before it is closed: whoever opens the file now finds the points rewritten.
  const bool same = BytesOf(file.Path()) == expected;
  if (leftOpen) m_fclose("", 0, g_open);
  if (rewritten != whole || leftOpen == whole || !same) {
    std::fprintf(stderr, "rewritten %d, whole %d, left open %d, same bytes %d\n", rewritten, whole,
                 leftOpen, same);
    std::abort();
  }
  return 0;
}

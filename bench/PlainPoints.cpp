#include "PlainPoints.h"

#include <cstdint>
#include <cstdio>
#include <memory>

bool PlainShiftSurface(const std::string& path, double scale, const double* centre) {
  struct CloseFile {
    void operator()(FILE* stream) const { std::fclose(stream); }
  };
  const std::unique_ptr<FILE, CloseFile> stream(std::fopen(path.c_str(), "rb+"));
  char header[14];
  std::int32_t vertices = 0;
  std::int32_t triangles = 0;
  if (stream == nullptr || std::fread(header, 14, 1, stream.get()) != 1 ||
      std::fread(&vertices, 4, 1, stream.get()) != 1 ||
      std::fread(&triangles, 4, 1, stream.get()) != 1) {
    return false;
  }
  long place = 22;
  for (std::int32_t i = 0; i < vertices; ++i) {
    double xyz[3];
    if (std::fread(xyz, 24, 1, stream.get()) != 1) return false;
    if (std::fseek(stream.get(), place, SEEK_SET) != 0) return false;
    for (int axis = 0; axis < 3; ++axis) xyz[axis] = (xyz[axis] - centre[axis]) * scale;
    if (std::fwrite(xyz, 24, 1, stream.get()) != 1) return false;
    place += 24;
    if (std::fseek(stream.get(), place, SEEK_SET) != 0) return false;
  }
  return true;
}

#include "PlainDumpBinaryPathsText.h"

#include <cstdint>
#include <cstdio>
#include <memory>

namespace {

struct CloseFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<FILE, CloseFile>;

bool Integer(FILE* in, FILE* out, const char* comment, std::int32_t* value) {
  return std::fread(value, sizeof *value, 1, in) == 1 &&
         std::fprintf(out, "%d //%s\n", *value, comment) > 0;
}

bool Numbers(FILE* in, FILE* out, int count, const char* comment) {
  double values[9];
  const auto size = static_cast<std::size_t>(count);
  if (std::fread(values, sizeof(double), size, in) != size) return false;
  for (std::size_t i = 0; i < size; ++i) {
    if (std::fprintf(out, "%20.10f //%s\n", values[i], comment) < 1) return false;
  }
  return true;
}

bool Positions(FILE* in, FILE* out, std::int32_t pathType, std::int32_t count) {
  const std::size_t doubles = pathType == 2 ? 6 : 3;
  for (std::int32_t i = 0; i < count; ++i) {
    double p[6];
    if (std::fread(p, sizeof(double), doubles, in) != doubles) return false;
    if (std::fprintf(out, "%20.10f %20.10f %20.10f // %daxis tip position\n", p[0], p[1], p[2],
                     pathType == 2 ? 5 : 3) < 1) {
      return false;
    }
    if (pathType == 2 &&
        std::fprintf(out, "%20.10f %20.10f %20.10f // 5axis ijk vector\n", p[3], p[4], p[5]) < 1) {
      return false;
    }
  }
  return true;
}

bool Path(FILE* in, FILE* out) {
  std::int32_t pathType = 0;
  std::int32_t value = 0;
  std::int32_t cuts = 0;
  if (!Integer(in, out, "pathType", &pathType) || !Integer(in, out, "color", &value)) return false;
  for (const int count : {1, 1, 1, 9, 3}) {
    if (!Numbers(in, out, count, "placement")) return false;
  }
  if (!Integer(in, out, "tool type", &value) || !Numbers(in, out, 6, "tool")) return false;
  if (!Integer(in, out, "number of Cuts", &cuts)) return false;
  for (std::int32_t i = 0; i < cuts; ++i) {
    if (!Integer(in, out, "number of Tool Positions", &value)) return false;
    if (!Positions(in, out, pathType, value)) return false;
  }
  return true;
}

}  // namespace

bool PlainDumpBinaryPathsText(const std::string& directory) {
  const File in(std::fopen((directory + "BinaryPaths.tmp").c_str(), "rb"));
  const File out(std::fopen((directory + "plain.txt").c_str(), "w"));
  char delimiter[17] = {};
  std::int32_t version = 0;
  std::int32_t paths = 0;
  if (in == nullptr || out == nullptr || std::fread(delimiter, 16, 1, in.get()) != 1 ||
      !Integer(in.get(), out.get(), "version", &version) ||
      !Integer(in.get(), out.get(), "paths", &paths)) {
    return false;
  }
  for (std::int32_t i = 0; i < paths; ++i) {
    if (!Path(in.get(), out.get())) return false;
  }
  return true;
}

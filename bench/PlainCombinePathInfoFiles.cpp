#include "PlainCombinePathInfoFiles.h"

#include <cstdint>
#include <cstdio>
#include <memory>

namespace {

struct CloseFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<FILE, CloseFile>;

template <class Value>
bool Put(FILE* out, Value value) {
  return std::fwrite(&value, sizeof value, 1, out) == 1;
}

template <class Narrow>
bool Widen(FILE* in, FILE* out, std::int32_t* value) {
  Narrow narrow = 0;
  if (std::fread(&narrow, sizeof narrow, 1, in) != 1) return false;
  *value = narrow;
  return Put(out, *value);
}

bool Doubles(FILE* in, FILE* out, std::size_t count) {
  double values[9];
  return std::fread(values, sizeof(double), count, in) == count &&
         std::fwrite(values, sizeof(double), count, out) == count;
}

bool Positions(FILE* in, FILE* out, std::size_t doubles) {
  if (!Put(out, std::int32_t{1})) return false;
  const long place = std::ftell(out);
  std::uint32_t count = 0;
  if (!Put(out, count)) return false;
  double position[6] = {};
  while (std::fread(position, sizeof(double), doubles, in) > 0) {
    if (std::fwrite(position, sizeof(double), doubles, out) != doubles) return false;
    ++count;
  }
  return std::fseek(out, place, SEEK_SET) == 0 && Put(out, count) &&
         std::fseek(out, 0, SEEK_END) == 0;
}

}  // namespace

bool PlainCombinePathInfoFile(const std::string& directory) {
  const File out(std::fopen((directory + "plain.tmp").c_str(), "wb"));
  const File in(std::fopen((directory + "TmpPathInfo0.tmp").c_str(), "rb"));
  if (out == nullptr || in == nullptr) return false;
  std::int32_t pathType = 0;
  std::int32_t value = 0;
  if (std::fwrite("binary toolpaths", 16, 1, out.get()) != 1 || !Put(out.get(), std::int32_t{0}) ||
      !Put(out.get(), std::int32_t{1}) || !Widen<std::int16_t>(in.get(), out.get(), &pathType) ||
      !Widen<std::uint8_t>(in.get(), out.get(), &value)) {
    return false;
  }
  for (const std::size_t count : {1u, 1u, 1u, 9u, 3u}) {
    if (!Doubles(in.get(), out.get(), count)) return false;
  }
  return Widen<std::int16_t>(in.get(), out.get(), &value) && Doubles(in.get(), out.get(), 6) &&
         Positions(in.get(), out.get(), pathType == 1 ? 3 : 6);
}

#include "stock/ReadHighestVertex.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "blocks/BlockReader.h"

namespace {

constexpr std::size_t kHeaderSize = 14;
constexpr std::size_t kVertexSize = 3 * sizeof(double);

bool ReadVertexCount(BlockReader* in, std::int32_t* count) {
  char header[kHeaderSize];
  std::int32_t triangles = 0;
  return in->Read(header, sizeof header) && in->Read(count) && in->Read(&triangles);
}

void KeepHigher(const unsigned char* record, bool isFirst, double* highest) {
  double xyz[3];
  std::memcpy(xyz, record, sizeof xyz);
  if (isFirst || xyz[2] > highest[2]) std::memcpy(highest, xyz, sizeof xyz);
}

}  // namespace

bool ReadHighestVertex(FILE* stream, double* xyz) {
  BlockReader in(stream);
  std::int32_t count = 0;
  if (!ReadVertexCount(&in, &count) || count < 1) return false;
  auto left = static_cast<std::size_t>(count);
  bool isFirst = true;
  while (left > 0) {
    const BlockReader::Records records = in.ReadRecords(kVertexSize, left);
    if (records.count == 0) return false;
    for (std::size_t i = 0; i < records.count; ++i) {
      KeepHigher(records.bytes + i * kVertexSize, isFirst, xyz);
      isFirst = false;
    }
    left -= records.count;
  }
  return true;
}

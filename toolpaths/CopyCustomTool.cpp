#include "toolpaths/CopyCustomTool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "blocks/BlockReader.h"
#include "blocks/BlockWriter.h"

namespace {

// The arrays of one list: flip flags, piece indices, values and, for arcs, convex flags.
struct ListLayout {
  std::size_t valuesSize;
  bool hasConvexFlags;

  std::size_t PieceSize() const {
    return 1 + sizeof(std::int32_t) + valuesSize + (hasConvexFlags ? 1 : 0);
  }
};

constexpr ListLayout kArcs{4 * sizeof(double), true};
constexpr ListLayout kLines{3 * sizeof(double), false};

using Bytes = std::unique_ptr<unsigned char[]>;

// Null when the input ends early or there is no memory. The memory grows with what has arrived, so
// that a count which the file does not live up to costs nothing.
Bytes ReadBytes(BlockReader* in, std::size_t size) {
  Bytes bytes;
  std::size_t filled = 0;
  while (filled < size) {
    const std::size_t next = std::min(size, std::max<std::size_t>(65536, 2 * filled));
    Bytes grown(new (std::nothrow) unsigned char[next]());
    if (grown == nullptr) return nullptr;
    if (filled > 0) std::memcpy(grown.get(), bytes.get(), filled);
    if (!in->Read(grown.get() + filled, next - filled)) return nullptr;
    bytes = std::move(grown);
    filled = next;
  }
  return bytes;
}

bool CopyPieces(std::int32_t signedCount, const ListLayout& layout, BlockReader* in,
                BlockWriter* out) {
  if (signedCount < 1) return true;
  const auto count = static_cast<std::size_t>(signedCount);
  const Bytes arrays = ReadBytes(in, count * layout.PieceSize());
  if (arrays == nullptr) return false;
  const unsigned char* flips = arrays.get();
  const unsigned char* indices = flips + count;
  const unsigned char* values = indices + count * sizeof(std::int32_t);
  const unsigned char* convexFlags = values + count * layout.valuesSize;
  for (std::size_t i = 0; i < count; ++i) {
    if (!out->Write(indices + i * sizeof(std::int32_t), sizeof(std::int32_t))) return false;
    if (!out->Write(values + i * layout.valuesSize, layout.valuesSize)) return false;
    if (!out->Write(flips[i])) return false;
    if (layout.hasConvexFlags && !out->Write(convexFlags[i])) return false;
  }
  return true;
}

}  // namespace

bool CopyCustomTool(BlockReader* in, BlockWriter* out) {
  std::int32_t arcs = 0;
  std::int32_t lines = 0;
  if (!in->Read(&arcs) || !in->Read(&lines)) return false;
  // One negative count passes beside a positive one; whoever reads the result refuses it.
  if (arcs < 1 && lines < 1) return false;
  return out->Write(arcs) && out->Write(lines) && CopyPieces(arcs, kArcs, in, out) &&
         CopyPieces(lines, kLines, in, out);
}

#include "toolpaths/InterchangeHead.h"

#include <cstdint>

#include "blocks/BlockWriter.h"

bool WriteInterchangeHead(BlockWriter* out) {
  static constexpr char kDelimiter[] = "binary toolpaths";
  return out->Write(kDelimiter, sizeof kDelimiter - 1) && out->Write(std::int32_t{0});
}

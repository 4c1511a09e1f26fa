// Any bytes as the surface whose highest vertex the add-in looks for.
#include <cstdio>

#include "InputFile.h"
#include "stock/ReadHighestVertex.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.iff");
  input.Write(data, size);
  FILE* stream = std::fopen(input.Path().c_str(), "rb");
  double highest[3];
  ReadHighestVertex(stream, highest);
  std::fclose(stream);
  return 0;
}

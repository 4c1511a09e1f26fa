#include "host/files/SameBytes.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include "formats/OpenFile.h"

namespace host {

namespace {

// Fewer than asked for only at the end of the file.
size_t ReadBlock(std::ifstream& stream, std::vector<char>& block) {
  stream.read(block.data(), static_cast<std::streamsize>(block.size()));
  return static_cast<size_t>(stream.gcount());
}

}  // namespace

bool SameBytes(const std::string& first, const std::string& second) {
  if (formats::FileSize(first) != formats::FileSize(second)) return false;
  std::ifstream a = formats::OpenForReading(first);
  std::ifstream b = formats::OpenForReading(second);
  std::vector<char> blockOfA(size_t{1} << 18);
  std::vector<char> blockOfB(blockOfA.size());
  for (;;) {
    const size_t size = ReadBlock(a, blockOfA);
    if (ReadBlock(b, blockOfB) != size) return false;
    if (!std::equal(blockOfA.begin(), blockOfA.begin() + static_cast<std::ptrdiff_t>(size),
                    blockOfB.begin())) {
      return false;
    }
    if (size < blockOfA.size()) return true;
  }
}

}  // namespace host

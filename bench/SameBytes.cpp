#include "SameBytes.h"

#include <cstdio>
#include <memory>
#include <vector>

bool SameBytes(const std::string& a, const std::string& b) {
  struct CloseFile {
    void operator()(FILE* stream) const { std::fclose(stream); }
  };
  const std::unique_ptr<FILE, CloseFile> first(std::fopen(a.c_str(), "rb"));
  const std::unique_ptr<FILE, CloseFile> second(std::fopen(b.c_str(), "rb"));
  std::vector<char> firstBlock(1 << 20);
  std::vector<char> secondBlock(1 << 20);
  while (first != nullptr && second != nullptr) {
    const std::size_t got = std::fread(firstBlock.data(), 1, firstBlock.size(), first.get());
    if (std::fread(secondBlock.data(), 1, secondBlock.size(), second.get()) != got) return false;
    firstBlock.resize(got);
    secondBlock.resize(got);
    if (firstBlock != secondBlock) return false;
    if (got == 0) return true;
  }
  return false;
}

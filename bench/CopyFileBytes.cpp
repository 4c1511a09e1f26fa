#include "CopyFileBytes.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace {

struct CloseFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using File = std::unique_ptr<FILE, CloseFile>;

}  // namespace

bool CopyFileBytes(const std::string& from, const std::string& to) {
  const File in(std::fopen(from.c_str(), "rb"));
  const File out(std::fopen(to.c_str(), "wb"));
  if (in == nullptr || out == nullptr) return false;
  std::setvbuf(in.get(), nullptr, _IONBF, 0);
  std::setvbuf(out.get(), nullptr, _IONBF, 0);
  std::vector<char> block(1 << 20);
  std::size_t got = 0;
  while ((got = std::fread(block.data(), 1, block.size(), in.get())) > 0) {
    if (std::fwrite(block.data(), 1, got, out.get()) != got) return false;
  }
  return std::ferror(in.get()) == 0;
}

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace formats {

static_assert(std::endian::native == std::endian::little, "fields are written as they stand");

// Writes packed little-endian fields in large blocks. The file is complete once Finish() has
// returned; what an abandoned writer leaves on disk is unspecified.
class BinaryWriter {
 public:
  explicit BinaryWriter(const std::string& path);

  template <typename T>
  void Write(T value) {
    static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>);
    WriteBytes(&value, sizeof value);
  }
  void WriteFlag(bool flag) { Write<std::uint8_t>(flag ? 1 : 0); }
  void WriteText(std::string_view text) { WriteBytes(text.data(), text.size()); }
  void WriteBytes(const void* source, std::size_t size);

  // Flushes and closes. Throws FileError when any byte could not be written.
  void Finish();

 private:
  void Flush();

  std::string path_;
  std::ofstream stream_;
  std::vector<char> block_;
};

}  // namespace formats

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace formats {

static_assert(std::endian::native == std::endian::little, "fields are decoded in place");

// Reads packed little-endian fields one after the other, in large blocks from disk. Each read names
// its field for the message of the FileError that a file cut short leads to.
class BinaryReader {
 public:
  explicit BinaryReader(const std::string& path);

  template <typename T>
  T Read(std::string_view field) {
    static_assert(std::is_arithmetic_v<T>);
    T value;
    ReadBytes(&value, sizeof value, field);
    return value;
  }

  // One byte; everything but 0 is true.
  bool ReadFlag(std::string_view field) { return Read<std::uint8_t>(field) != 0; }

  void ReadBytes(void* destination, std::size_t size, std::string_view field);

  // `count` doubles. A count that the rest of the file cannot hold is refused before any
  // allocation.
  std::vector<double> ReadDoubles(std::uint64_t count, std::string_view field);

  // Throws the FileError unless the rest of the file holds `count` records of `recordSize` bytes.
  void RequireRecords(std::uint64_t count, std::uint64_t recordSize, std::string_view what) const;

  std::uint64_t Offset() const { return offset_; }  // of the next field, in bytes from the start
  std::uint64_t Remaining() const { return size_ - offset_; }

  // Throws a FileError about the field at `offset`.
  [[noreturn]] void Fail(const std::string& reason, std::uint64_t offset) const;

 private:
  void Refill(std::string_view field);

  std::string path_;
  std::uint64_t size_;
  std::ifstream stream_;
  std::uint64_t offset_ = 0;
  std::vector<char> block_;
  std::size_t used_ = 0;    // bytes of block_ already handed out
  std::size_t filled_ = 0;  // bytes of block_ that hold data
};

}  // namespace formats

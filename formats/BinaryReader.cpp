#include "formats/BinaryReader.h"

#include <algorithm>

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace formats {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 18;

}  // namespace

BinaryReader::BinaryReader(const std::string& path)
    : path_(path), size_(0), stream_(OpenForReading(path)) {
  size_ = FileSize(path);
  block_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(blockSize, size_)));
}

void BinaryReader::ReadBytes(void* destination, std::size_t size, std::string_view field) {
  if (size > Remaining()) Fail("the file ends within the " + std::string(field), offset_);
  char* to = static_cast<char*>(destination);
  while (size > 0) {
    if (used_ == filled_) Refill(field);
    const std::size_t part = std::min(size, filled_ - used_);
    std::memcpy(to, block_.data() + used_, part);
    used_ += part;
    offset_ += part;
    to += part;
    size -= part;
  }
}

std::vector<double> BinaryReader::ReadDoubles(std::uint64_t count, std::string_view field) {
  RequireRecords(count, sizeof(double), field);
  std::vector<double> values(static_cast<std::size_t>(count));
  ReadBytes(values.data(), values.size() * sizeof(double), field);
  return values;
}

void BinaryReader::RequireRecords(std::uint64_t count, std::uint64_t recordSize,
                                  std::string_view what) const {
  const std::uint64_t room = Remaining() / recordSize;
  if (count <= room) return;
  Fail("the file ends within the " + std::string(what) + ": " + std::to_string(count) +
           " announced, room for " + std::to_string(room),
       offset_);
}

void BinaryReader::Fail(const std::string& reason, std::uint64_t offset) const {
  throw FileError(path_ + ": " + reason + " (byte " + std::to_string(offset) + ")");
}

void BinaryReader::Refill(std::string_view field) {
  stream_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
  used_ = 0;
  filled_ = static_cast<std::size_t>(stream_.gcount());
  // The size was taken before: the file has shrunk since, or the disk does not deliver.
  if (filled_ == 0) Fail("cannot be read within the " + std::string(field), offset_);
}

}  // namespace formats

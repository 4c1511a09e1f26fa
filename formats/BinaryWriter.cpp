#include "formats/BinaryWriter.h"

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace formats {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 18;

}  // namespace

BinaryWriter::BinaryWriter(const std::string& path) : path_(path), stream_(OpenForWriting(path)) {
  block_.reserve(blockSize);
}

void BinaryWriter::WriteBytes(const void* source, std::size_t size) {
  if (block_.size() + size > blockSize) Flush();
  if (size > blockSize) {
    stream_.write(static_cast<const char*>(source), static_cast<std::streamsize>(size));
    return;
  }
  const char* from = static_cast<const char*>(source);
  block_.insert(block_.end(), from, from + size);
}

void BinaryWriter::Finish() {
  Flush();
  stream_.close();
  if (!stream_) throw FileError(path_ + ": cannot be written completely");
}

void BinaryWriter::Flush() {
  stream_.write(block_.data(), static_cast<std::streamsize>(block_.size()));
  block_.clear();
}

}  // namespace formats

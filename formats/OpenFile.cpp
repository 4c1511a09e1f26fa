#include "formats/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <ios>
#include <system_error>

#include "formats/FileError.h"
#include "platform/PathText.h"

namespace formats {
namespace {

std::string LastError() { return std::generic_category().message(errno); }

}  // namespace

std::string NativePath(std::string path) {
  constexpr char separator = std::filesystem::path::preferred_separator == '/' ? '/' : '\\';
  const auto isSeparator = [](char c) { return c == '/' || c == '\\'; };
  std::replace_if(path.begin(), path.end(), isSeparator, separator);
  return path;
}

std::filesystem::path LibraryPath(const std::string& path) {
  return PathFromText(NativePath(path));
}

std::ifstream OpenForReading(const std::string& path) {
  std::error_code ignored;
  // Opening a directory succeeds on some systems and only its first read fails.
  if (std::filesystem::is_directory(LibraryPath(path), ignored)) {
    throw FileError(path + ": is a directory");
  }
  errno = 0;
  std::ifstream stream(NativePath(path), std::ios::binary);
  if (!stream) throw FileError(path + ": cannot be opened: " + LastError());
  return stream;
}

std::ofstream OpenForWriting(const std::string& path) {
  errno = 0;
  std::ofstream stream(NativePath(path), std::ios::binary | std::ios::trunc);
  if (!stream) throw FileError(path + ": cannot be written: " + LastError());
  return stream;
}

std::uint64_t FileSize(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(LibraryPath(path), error);
  if (error) throw FileError(path + ": cannot be opened: " + error.message());
  return size;
}

std::string ReadWholeFile(const std::string& path) {
  std::ifstream stream = OpenForReading(path);
  std::string text(static_cast<std::size_t>(FileSize(path)), '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (stream.bad()) throw FileError(path + ": cannot be read");
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

}  // namespace formats

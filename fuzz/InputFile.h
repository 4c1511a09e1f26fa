#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

/// A directory of the process's own in which the fuzzer's bytes stand as a file; readers are given
/// its path. Removed at the end.
class InputFile {
 public:
  /// `name` as the reader expects it.
  explicit InputFile(const char* name)
      : m_directory(std::filesystem::temp_directory_path() / ("qzfuzz" + std::to_string(getpid()))),
        m_path(m_directory / name) {
    std::filesystem::create_directories(m_directory);
  }
  ~InputFile() {
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
  }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  void Write(const std::uint8_t* data, std::size_t size) const {
    std::ofstream stream(m_path, std::ios::binary);
    stream << std::string(data, data + size);
  }

  std::string Path() const { return m_path.string(); }
  /// With the trailing backslash that the add-in expects.
  std::string AddInDirectory() const { return m_directory.string() + "\\"; }

 private:
  std::filesystem::path m_directory;
  std::filesystem::path m_path;
};

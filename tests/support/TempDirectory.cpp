#include "support/TempDirectory.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <system_error>

#include "platform/PathText.h"
#include "support/LineEnd.h"

namespace support {

TempDirectory::TempDirectory() {
  std::random_device random;
  do {
    m_path = std::filesystem::temp_directory_path() /
             ("qz-" + std::to_string(random()) + std::to_string(random()));
  } while (!std::filesystem::create_directory(m_path));
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::filesystem::path TempDirectory::Sub(const std::string& name) const {
  std::filesystem::path directory = m_path / name;
  std::filesystem::create_directories(directory);
  return directory;
}

std::string AddinSpelling(const std::filesystem::path& directory) {
  std::string text = TextFromPath(directory);
  std::replace(text.begin(), text.end(), '/', '\\');
  if (!text.ends_with('\\')) text += '\\';
  return text;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string ReadTextFile(const std::filesystem::path& path) {
  std::ifstream file(path);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.good()) << path;
}

std::string TextFileBytes(const std::string& text) {
  std::string bytes;
  for (const char character : text) {
    if (character == '\n') {
      bytes += kLineEnd;
    } else {
      bytes += character;
    }
  }
  return bytes;
}

std::map<std::string, std::string> FilesIn(const std::filesystem::path& directory) {
  std::map<std::string, std::string> files;
  for (const std::string& name : NamesIn(directory)) files[name] = ReadWholeFile(directory / name);
  return files;
}

std::vector<std::string> NamesIn(const std::filesystem::path& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace support

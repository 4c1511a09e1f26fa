#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>

// A directory of the test's own, removed with everything in it.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    static std::atomic<unsigned> number = 0;
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string("formats_") + info->test_suite_name() + "_" + info->name() +
                       "_" + std::to_string(std::random_device{}()) + "_" +
                       std::to_string(number++);
    for (char& c : name) {
      if (c == '/') c = '_';
    }
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::string operator/(std::string_view name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// The bytes of a file, put together field by field.
class Bytes {
 public:
  template <typename T>
  Bytes& Add(T value) {
    static_assert(std::is_arithmetic_v<T>);
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    content_.append(raw, sizeof raw);
    return *this;
  }
  Bytes& Text(std::string_view text) {
    content_ += text;
    return *this;
  }
  Bytes& I16(int value) { return Add(static_cast<std::int16_t>(value)); }
  Bytes& I32(int value) { return Add(static_cast<std::int32_t>(value)); }
  Bytes& U32(unsigned value) { return Add(static_cast<std::uint32_t>(value)); }
  Bytes& U8(int value) { return Add(static_cast<std::uint8_t>(value)); }
  template <typename... Values>
  Bytes& F64(Values... values) {
    (Add(static_cast<double>(values)), ...);
    return *this;
  }
  template <typename... Values>
  Bytes& F32(Values... values) {
    (Add(static_cast<float>(values)), ...);
    return *this;
  }

  const std::string& Content() const { return content_; }
  std::size_t Size() const { return content_.size(); }

 private:
  std::string content_;
};

inline void WriteContent(const std::string& path, std::string_view content) {
  std::ofstream stream(path, std::ios::binary);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  ASSERT_TRUE(stream.good()) << path;
}

inline std::string ReadContent(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// What a call throws as FileError, or an empty text when it throws none.
template <typename Error, typename Call>
std::string MessageOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

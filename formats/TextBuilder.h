#pragma once

#include <charconv>
#include <string_view>
#include <type_traits>

#include "formats/BinaryWriter.h"

namespace formats {

// Writes a text with '\n' at its line ends on every system. Doubles take the shortest form that
// reads back as the same double.
class TextBuilder {
 public:
  explicit TextBuilder(const std::string& path) : writer_(path) {}

  template <typename... Parts>
  TextBuilder& Add(const Parts&... parts) {
    (AddOne(parts), ...);
    return *this;
  }

  void Finish() { writer_.Finish(); }

 private:
  void AddOne(std::string_view text) { writer_.WriteText(text); }

  template <typename T>
  requires std::is_arithmetic_v<T>
  void AddOne(T value) {
    static_assert(!std::is_same_v<T, char> && !std::is_same_v<T, bool>);
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    writer_.WriteBytes(digits, static_cast<std::size_t>(end - digits));
  }

  BinaryWriter writer_;
};

}  // namespace formats

#include "platform/PathText.h"

#include "SystemApi.h"

std::filesystem::path PathFromText(const std::string& text) {
  const auto length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int used = MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
  wide.resize(static_cast<std::size_t>(used));
  return wide;
}

std::string TextFromPath(const std::filesystem::path& path) {
  const std::wstring wide = path.wstring();
  const auto length = static_cast<int>(wide.size());
  const auto convert = [&](char* text, int size) {
    return WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text, size, nullptr, nullptr);
  };
  std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

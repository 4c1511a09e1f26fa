#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/QZCore/HostControl.h"
#include "host/QZCore/RegistryKey.h"

namespace {

constexpr const char* kHostKey = "Software\\qzhost";
constexpr const char* kToolpathsKey = "Software\\qzhost\\Configurations\\Variables\\Toolpaths";
constexpr const char* kStockDataDirectory = "Enable Stock Model Data Directory";

std::string& StockDataDirectoryOverride() {
  static std::string directory;
  return directory;
}

// A key as it was opened: its own path, and the system's key, which may be missing when only an
// override makes it exist.
struct OpenKey {
  std::string path;
  std::unique_ptr<RegistryKey> key;
};

std::vector<std::unique_ptr<OpenKey>>& OpenKeys() {
  static std::vector<std::unique_ptr<OpenKey>> keys;
  return keys;
}

// Handles are addresses of our own records; whoever gets one can only hand it back.
OpenKey* FindOpenKey(HKEY handle) {
  for (const auto& open : OpenKeys()) {
    if (reinterpret_cast<HKEY>(open.get()) == handle) return open.get();
  }
  return nullptr;
}

char Store(const std::string& text, char* value, unsigned long* size) {
  const unsigned long needed = static_cast<unsigned long>(text.size() + 1);
  const unsigned long capacity = *size;
  *size = needed;
  if (capacity < needed) return 0;
  std::memcpy(value, text.c_str(), needed);
  return 1;
}

}  // namespace

void OverrideStockDataDirectory(const char* directory) {
  StockDataDirectoryOverride() = directory == nullptr ? "" : directory;
}

CString StockDataDirectory() {
  constexpr unsigned long kQueryValue = 1;
  if (!StockDataDirectoryOverride().empty()) return StockDataDirectoryOverride().c_str();
  const auto key = OpenRegistryKey(kToolpathsKey, nullptr, kQueryValue);
  const auto text = key == nullptr ? std::nullopt : key->Text(kStockDataDirectory);
  return text.has_value() ? text->c_str() : "";
}

void get_REG_KEY(char* key) {
  constexpr std::size_t kKeySize = 260;
  std::snprintf(key, kKeySize, "%s", kHostKey);
}

char RegOpen(CString path, HKEY* key, HKEY parent, unsigned long access) {
  if (key == nullptr) return 0;
  *key = nullptr;
  auto open = std::make_unique<OpenKey>();
  open->path = path.GetString();
  if (const OpenKey* opened = FindOpenKey(parent)) {
    open->path = opened->path + "\\" + open->path;
    parent = nullptr;
  }
  open->key = OpenRegistryKey(open->path, parent, access);
  const bool overridden = !StockDataDirectoryOverride().empty() && open->path == kToolpathsKey;
  if (open->key == nullptr && !overridden) return 0;
  *key = reinterpret_cast<HKEY>(open.get());
  OpenKeys().push_back(std::move(open));
  return 1;
}

char GetStringValue(HKEY key, const char* name, char* value, unsigned long* size) {
  const OpenKey* open = FindOpenKey(key);
  if (open == nullptr || name == nullptr || value == nullptr || size == nullptr) return 0;
  const std::string& directory = StockDataDirectoryOverride();
  if (!directory.empty() && open->path == kToolpathsKey &&
      std::strcmp(name, kStockDataDirectory) == 0) {
    return Store(directory, value, size);
  }
  if (open->key == nullptr) return 0;
  const auto text = open->key->Text(name);
  return text.has_value() ? Store(*text, value, size) : static_cast<char>(0);
}

char RegClose(HKEY key) {
  auto& keys = OpenKeys();
  const auto found = std::find_if(keys.begin(), keys.end(), [&](const auto& open) {
    return reinterpret_cast<HKEY>(open.get()) == key;
  });
  if (found == keys.end()) return 0;
  keys.erase(found);
  return 1;
}

#include "host/QZCore/RegistryKey.h"

#include <algorithm>

#include "SystemApi.h"

namespace {

class SystemKey : public RegistryKey {
 public:
  explicit SystemKey(HKEY key) : m_key(key) {}
  SystemKey(const SystemKey&) = delete;
  SystemKey& operator=(const SystemKey&) = delete;
  ~SystemKey() override { RegCloseKey(m_key); }

  std::optional<std::string> Text(const std::string& name) const override {
    DWORD type = 0;
    DWORD size = 0;
    if (Query(name, &type, nullptr, &size) != ERROR_SUCCESS) return std::nullopt;
    if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
    std::string text(size, '\0');
    if (Query(name, &type, text.data(), &size) != ERROR_SUCCESS) return std::nullopt;
    // The stored text may come with a terminating zero, or without.
    return text.substr(0, std::min<size_t>(text.find('\0'), size));
  }

 private:
  LSTATUS Query(const std::string& name, DWORD* type, char* text, DWORD* size) const {
    return RegQueryValueExA(m_key, name.c_str(), nullptr, type, reinterpret_cast<BYTE*>(text),
                            size);
  }

  HKEY m_key;
};

}  // namespace

std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, HKEY parent,
                                             unsigned long access) {
  HKEY key = nullptr;
  const HKEY hive = parent != nullptr ? parent : HKEY_CURRENT_USER;
  if (RegOpenKeyExA(hive, path.c_str(), 0, access, &key) != ERROR_SUCCESS) return nullptr;
  return std::make_unique<SystemKey>(key);
}

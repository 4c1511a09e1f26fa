#include "host/QZCore/RegistryKey.h"

#include <cstdlib>
#include <fstream>
#include <map>

#include "host/QZCore/posix/IniFile.h"

namespace {

// Where the keys are kept: QZHOST_CONFIG names the file itself, else the user's configuration
// directory holds it.
std::string ConfigurationFile() {
  if (const char* file = std::getenv("QZHOST_CONFIG")) return file;
  if (const char* directory = std::getenv("XDG_CONFIG_HOME"); directory && directory[0] == '/') {
    return std::string(directory) + "/qzhost.ini";
  }
  const char* home = std::getenv("HOME");
  return home == nullptr ? std::string() : std::string(home) + "/.config/qzhost.ini";
}

class IniKey : public RegistryKey {
 public:
  explicit IniKey(IniSection section) : m_section(std::move(section)) {}

  std::optional<std::string> Text(const std::string& name) const override {
    const auto found = m_section.find(FoldCase(name));
    if (found == m_section.end()) return std::nullopt;
    return found->second;
  }

 private:
  IniSection m_section;
};

}  // namespace

std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, HKEY parent, unsigned long) {
  if (parent != nullptr) return nullptr;
  std::ifstream file(ConfigurationFile(), std::ios::binary);
  if (!file) return nullptr;
  auto section = ReadIniSection(file, path);
  if (!section.has_value()) return nullptr;
  return std::make_unique<IniKey>(std::move(*section));
}

#include "addin/directories.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

#include "SystemApi.h"
#include "addin/working_files.h"
#include "platform/QZCore.h"

namespace {

constexpr std::size_t kRegistryTextSize = 260;
constexpr std::size_t kPathSize = 256;
constexpr unsigned long kReadAccess = 131097;  // KEY_READ

class OpenRegistryKey {
 public:
  explicit OpenRegistryKey(const char* path)
      : m_open(RegOpen(path, &m_key, nullptr, kReadAccess) != 0) {}
  OpenRegistryKey(const OpenRegistryKey&) = delete;
  OpenRegistryKey& operator=(const OpenRegistryKey&) = delete;
  ~OpenRegistryKey() {
    if (m_open) RegClose(m_key);
  }

  explicit operator bool() const { return m_open; }
  HKEY Get() const { return m_key; }

 private:
  HKEY m_key = nullptr;
  bool m_open;
};

void CopyTruncated(char (&buffer)[kPathSize], const CString& text) {
  std::snprintf(buffer, sizeof buffer, "%s", text.GetString());
}

bool EndsWithBackslash(const CString& text) {
  // The test sees no more of the text than fits the buffer: of a longer one it sees a character in
  // the middle.
  char buffer[kPathSize];
  CopyTruncated(buffer, text);
  const std::size_t length = std::strlen(buffer);
  return length > 0 && buffer[length - 1] == '\\';
}

}  // namespace

bool GetStockDataDirectory(CString& directory) {
  // Both buffers have a byte more than the host knows of: a text that fills them still ends.
  char hostKey[kRegistryTextSize + 1] = "";
  get_REG_KEY(hostKey);
  const OpenRegistryKey key(CString(hostKey) + "\\Configurations\\Variables\\Toolpaths");
  if (!key) return false;

  char value[kRegistryTextSize + 1] = "";
  unsigned long size = kRegistryTextSize;
  if (GetStringValue(key.Get(), "Enable Stock Model Data Directory", value, &size) == 0) {
    return false;
  }
  directory = value;
  return true;
}

CString StockDataDirectoryFor(const CString& workDir) {
  CString directory;
  if (!GetStockDataDirectory(directory)) directory = workDir;
  if (!EndsWithBackslash(directory)) directory += '\\';
  return directory;
}

CString SavePrefix(const CString& workDir) {
  char text[kPathSize];
  CopyTruncated(text, workDir);
  const int length = static_cast<int>(std::strlen(text));

  // Index 0 is never looked at, and without a backslash the search ends there all the same: such a
  // name loses its first character ("Part7\" gives "art7_").
  int separator = length - 2;
  while (separator > 0 && text[separator] != '\\') --separator;
  if (separator < 0) separator = 0;

  CString prefix = CString(text).Mid(separator + 1);
  // Whatever the last character is: normally the trailing backslash, but not always.
  if (!prefix.IsEmpty()) prefix.SetAt(prefix.GetLength() - 1, '_');
  return prefix;
}

CString SaveCopyBase(const CString& workDir) {
  return StockDataDirectoryFor(workDir) + SavePrefix(workDir);
}

bool CopyOver(const CString& source, const CString& destination) {
  return CopyFileA(source, destination, FALSE) != FALSE;
}

bool SaveCopy(const CString& source, const CString& destination) {
  return WorkingFileExists(source) && CopyOver(source, destination);
}

#include "host/qzhost/HostSystem.h"

#include <algorithm>
#include <cstdlib>

#include "SystemApi.h"
#include "platform/PathText.h"
// The process status interface builds on the system's own header.
#include <io.h>
#include <psapi.h>

namespace host {

namespace {

std::uint64_t Joined(DWORD high, DWORD low) {
  return static_cast<std::uint64_t>(high) << 32 | static_cast<std::uint64_t>(low);
}

}  // namespace

FileState StateOfFile(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION status{};
  const bool known = GetFileInformationByHandle(file, &status) != FALSE;
  CloseHandle(file);
  if (!known) return {};
  const FILETIME& modified = status.ftLastWriteTime;
  return {true, Joined(status.nFileSizeHigh, status.nFileSizeLow),
          static_cast<std::int64_t>(Joined(modified.dwHighDateTime, modified.dwLowDateTime)),
          Joined(status.nFileIndexHigh, status.nFileIndexLow)};
}

bool IsDirectory(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsWritableDirectory(const std::string& path) {
  if (!IsDirectory(path)) return false;
  // Access rights are not in the attributes; a file that vanishes when it is closed asks them all.
  const std::string probe = path + "\\qzhost-" + std::to_string(ProcessNumber()) + ".probe";
  const HANDLE file = CreateFileA(probe.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

std::vector<std::string> FilesIn(const std::string& directory) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA entry;
  const HANDLE search = FindFirstFileA((directory + "\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      names.emplace_back(entry.cFileName);
    }
  } while (FindNextFileA(search, &entry));
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

std::string FullPath(const std::string& path) {
  std::string full(GetFullPathNameA(path.c_str(), 0, nullptr, nullptr), '\0');
  const DWORD length =
      GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  full.resize(length);
  return full;
}

std::string ExecutableDirectory() {
  char path[32768];
  const std::string executable(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return executable.substr(0, executable.find_last_of("\\/") + 1);
}

std::uint64_t PeakMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
  return counters.PeakWorkingSetSize;
}

unsigned long ProcessNumber() { return GetCurrentProcessId(); }

void SetEnvironmentText(const std::string& name, const std::string& text) {
  // Through the run-time library, whose copy of the environment the kernel's modules share.
  _putenv_s(name.c_str(), text.c_str());
}

std::string Utf8(const std::string& text) {
  const std::u8string utf8 = PathFromText(text).u8string();
  return {utf8.begin(), utf8.end()};
}

bool StandardErrorIsTerminal() { return _isatty(2) != 0; }

}  // namespace host

#include "host/qzhost/AddInLibrary.h"

namespace host {

namespace {

std::string SystemMessage(DWORD error) {
  if (error == ERROR_DLL_INIT_FAILED) {
    return "its entry routine refuses (is Resources\\QZTUtlRes.dll in place?)";
  }
  char text[512];
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                error, 0, text, sizeof text, nullptr);
  while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r')) --length;
  return length > 0 ? std::string(text, length) : "error " + std::to_string(error);
}

}  // namespace

std::string AddInFileName() { return "QZTUtlA.dll"; }

HMODULE LoadAddInLibrary(const std::string& path, std::string* reason) {
  // With this flag the library's own imports are looked for beside it, too.
  const HMODULE library = LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library == nullptr) *reason = SystemMessage(GetLastError());
  return library;
}

void UnloadAddInLibrary(HMODULE library) { FreeLibrary(library); }

}  // namespace host

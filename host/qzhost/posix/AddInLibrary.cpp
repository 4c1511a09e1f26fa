#include "host/qzhost/AddInLibrary.h"

#include <dlfcn.h>

namespace host {

namespace {

using EntryRoutine = int(HINSTANCE, DWORD, LPVOID);

// A shared object cannot refuse to load, so its entry routine is called by hand where Windows
// would.
int CallEntryRoutine(HMODULE library, DWORD reason) {
  const FARPROC entry = GetProcAddress(library, "DllMain");
  return entry == nullptr ? 1 : reinterpret_cast<EntryRoutine*>(entry)(library, reason, nullptr);
}

}  // namespace

std::string AddInFileName() { return "QZTUtlA.so"; }

HMODULE LoadAddInLibrary(const std::string& path, std::string* reason) {
  const HMODULE library = LoadLibraryA(path.c_str());
  if (library == nullptr) {
    const char* error = dlerror();
    *reason = error == nullptr ? "no such library" : error;
    return nullptr;
  }
  if (CallEntryRoutine(library, DLL_PROCESS_ATTACH) != 0) return library;
  // As Windows does with a library that refuses: it is told that it goes, and can give back what it
  // took before it found out.
  CallEntryRoutine(library, DLL_PROCESS_DETACH);
  FreeLibrary(library);
  *reason = "its entry routine refuses (is Resources/QZTUtlRes.so in place?)";
  return nullptr;
}

void UnloadAddInLibrary(HMODULE library) {
  CallEntryRoutine(library, DLL_PROCESS_DETACH);
  FreeLibrary(library);
}

}  // namespace host

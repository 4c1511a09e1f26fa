#include <climits>
#include <dlfcn.h>
#include <string>
#include <unistd.h>

#include "SystemApi.h"
#include "TurnedPath.h"

namespace {

std::string ModuleFileName(const char* name) {
  std::string path = TurnedPath(name).c_str();
  constexpr const char* kWindowsEnding = ".dll";
  if (path.size() > 4 && path.compare(path.size() - 4, 4, kWindowsEnding) == 0) {
    path.replace(path.size() - 4, 4, ".so");
  }
  return path;
}

std::string ExecutableDirectory() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return std::string();
  const std::string executable(path, static_cast<size_t>(length));
  return executable.substr(0, executable.rfind('/') + 1);
}

HMODULE OpenModule(const std::string& path) {
  return static_cast<HMODULE>(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
}

}  // namespace

HMODULE LoadLibraryA(const char* name) {
  const std::string path = ModuleFileName(name);
  if (path.empty()) return nullptr;
  if (path.front() == '/') return OpenModule(path);
  for (const std::string& folder : {ExecutableDirectory(), std::string("./")}) {
    const std::string candidate = folder + path;
    if (access(candidate.c_str(), R_OK) == 0) return OpenModule(candidate);
  }
  return OpenModule(path);
}

BOOL FreeLibrary(HMODULE library) { return library != nullptr && dlclose(library) == 0; }

FARPROC GetProcAddress(HMODULE library, const char* name) {
  return reinterpret_cast<FARPROC>(dlsym(library, name));
}

#include "host/qzhost/AddIn.h"

#include "host/qzhost/AddInLibrary.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"
#include "platform/QZCore.h"

namespace host {

namespace {

constexpr int kProtocolVersion = 1500;

HMODULE Load(const std::string& path) {
  std::string reason;
  const HMODULE library = LoadAddInLibrary(path, &reason);
  if (library == nullptr) throw CommandError("cannot load the add-in " + path + ": " + reason);
  return library;
}

}  // namespace

AddIn::AddIn(const std::string& path)
    : m_path(path.empty() ? ExecutableDirectory() + AddInFileName() : FullPath(path)),
      m_library(Load(m_path)) {
  try {
    CheckProtocol();
  } catch (...) {
    UnloadAddInLibrary(m_library);
    throw;
  }
}

AddIn::~AddIn() { UnloadAddInLibrary(m_library); }

AddIn::AnyFunction* AddIn::Find(const char* name) const {
  const FARPROC function = GetProcAddress(m_library, name);
  if (function == nullptr) throw CommandError(m_path + " has no operation " + name);
  return reinterpret_cast<AnyFunction*>(function);
}

void AddIn::CheckProtocol() const {
  const int version = Export<int()>("m_version")();
  if (version != kProtocolVersion) {
    throw CommandError(m_path + " speaks version " + std::to_string(version) +
                       " of the protocol, not " + std::to_string(kProtocolVersion));
  }
  const int result = Export<int()>("m_main")();
  if (result != 0 || post_args[0][0] != 1) throw CommandError(m_path + " refuses to start");
}

}  // namespace host

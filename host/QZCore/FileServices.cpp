#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "host/QZCore/HostControl.h"
#include "host/QZCore/OpenStreams.h"
#include "platform/files.h"

namespace {

OpenStreams& Streams() {
  static OpenStreams streams;
  return streams;
}

struct CloseStdFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using StdFile = std::unique_ptr<FILE, CloseStdFile>;

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsFullPath(const char* path) {
  if (IsSeparator(path[0])) return true;
  const bool letter = (path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z');
  return letter && path[1] == ':';
}

std::string Join(const char* directory, const char* name) {
  std::string path;
  if (directory != nullptr && directory[0] != '\0' && !IsFullPath(name)) {
    path = directory;
    if (!IsSeparator(path.back())) path += '\\';
  }
  return path + name;
}

}  // namespace

FILE* m_fopen(const char* sourceUnit, int line, const char* path, const char* mode) {
  if (path == nullptr || mode == nullptr) return nullptr;
  StdFile stream(OpenStdFile(path, mode));
  // One that cannot be remembered for want of memory is not left open.
  if (stream != nullptr) Streams().Add(stream.get(), sourceUnit, line, path, mode);
  return stream.release();
}

FILE* m_fopen_hl(const char* sourceUnit, int line, const char* directory, const char* name,
                 const char* mode, bool* status) {
  FILE* stream = nullptr;
  if (name != nullptr) stream = m_fopen(sourceUnit, line, Join(directory, name).c_str(), mode);
  if (status != nullptr) *status = stream != nullptr;
  return stream;
}

void m_fclose(const char* sourceUnit, int line, FILE* stream) {
  if (stream == nullptr) return;
  // A stream that is not open any more must not be closed again: its memory may be another's.
  if (Streams().Remove(stream, sourceUnit, line)) std::fclose(stream);
}

int OpenStreamCount() { return Streams().Count(); }

CString OpenStreamReport() { return CString(Streams().Report().c_str()); }

void CloseStreamsOn(const char* path) {
  for (FILE* stream : Streams().RemoveAllOn(path)) std::fclose(stream);
}

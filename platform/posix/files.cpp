#include "platform/files.h"

#include <cerrno>
#include <cstdio>

#include "SystemApi.h"
#include "TurnedPath.h"

FILE* OpenStdFile(const char* path, const char* mode) {
  return std::fopen(TurnedPath(path).c_str(), mode);
}

int RemoveStdFile(const char* path) { return std::remove(TurnedPath(path).c_str()); }

errno_t fopen_s(FILE** stream, const char* path, const char* mode) {
  if (stream == nullptr) return EINVAL;
  *stream = nullptr;
  if (path == nullptr || mode == nullptr) return EINVAL;
  *stream = OpenStdFile(path, mode);
  return *stream == nullptr ? errno : 0;
}

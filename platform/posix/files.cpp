#include "platform/files.h"

#include <cerrno>
#include <cstdio>
#include <sys/types.h>

#include "SystemApi.h"
#include "TurnedPath.h"

FILE* OpenStdFile(const char* path, const char* mode) {
  return std::fopen(TurnedPath(path).c_str(), mode);
}

int RemoveStdFile(const char* path) { return std::remove(TurnedPath(path).c_str()); }

int SeekStdFile(FILE* stream, long long offset) {
  return fseeko(stream, static_cast<off_t>(offset), SEEK_SET);
}

errno_t fopen_s(FILE** stream, const char* path, const char* mode) {
  if (stream == nullptr) return EINVAL;
  *stream = nullptr;
  if (path == nullptr || mode == nullptr) return EINVAL;
  *stream = OpenStdFile(path, mode);
  return *stream == nullptr ? errno : 0;
}

#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "SystemApi.h"
#include "TurnedPath.h"

namespace {

bool CopyContents(int from, int to) {
  static thread_local char block[1 << 16];
  for (;;) {
    const ssize_t count = read(from, block, sizeof block);
    if (count <= 0) return count == 0;
    for (ssize_t written = 0; written < count;) {
      const ssize_t step = write(to, block + written, static_cast<size_t>(count - written));
      if (step < 0) return false;
      written += step;
    }
  }
}

bool CopyInto(int from, const struct stat& source, const char* to, bool failIfExists) {
  struct stat target;
  const bool exists = stat(to, &target) == 0;
  if (exists && (failIfExists || !S_ISREG(target.st_mode))) return false;
  // A copy onto itself would empty the file; Windows refuses it too.
  if (exists && target.st_dev == source.st_dev && target.st_ino == source.st_ino) return false;
  const int out = open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, source.st_mode & 0777);
  if (out < 0) return false;
  const timespec times[2] = {source.st_atim, source.st_mtim};
  const bool copied = CopyContents(from, out) && futimens(out, times) == 0;
  const bool closed = close(out) == 0;
  if (!copied || !closed) unlink(to);
  return copied && closed;
}

}  // namespace

DWORD GetCurrentDirectoryA(DWORD size, char* buffer) {
  char path[PATH_MAX];
  if (getcwd(path, sizeof path) == nullptr) return 0;
  const size_t length = std::strlen(path);
  if (buffer == nullptr || length >= size) return static_cast<DWORD>(length + 1);
  std::memcpy(buffer, path, length + 1);
  return static_cast<DWORD>(length);
}

BOOL SetCurrentDirectoryA(const char* path) { return chdir(TurnedPath(path).c_str()) == 0; }

BOOL CopyFileA(const char* from, const char* to, BOOL failIfExists) {
  const int in = open(TurnedPath(from).c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return FALSE;
  struct stat source;
  const bool copied = fstat(in, &source) == 0 && S_ISREG(source.st_mode) &&
                      CopyInto(in, source, TurnedPath(to).c_str(), failIfExists != FALSE);
  close(in);
  return copied ? TRUE : FALSE;
}

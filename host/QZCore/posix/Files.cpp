#include <cstdlib>
#include <string>
#include <sys/stat.h>

#include "TurnedPath.h"
#include "host/QZCore/HostControl.h"

char file_exists(const char* path, char) {
  struct stat status;
  return stat(TurnedPath(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode) ? 1 : 0;
}

CString GetTempDirectory() {
  const char* set = std::getenv("TMPDIR");
  std::string directory = set != nullptr && set[0] == '/' ? set : "/tmp";
  if (directory.back() != '/') directory += '/';
  // Directories reach the add-in in its own spelling.
  for (char& c : directory) {
    if (c == '/') c = '\\';
  }
  return CString(directory.c_str());
}

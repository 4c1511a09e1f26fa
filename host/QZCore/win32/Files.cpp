#include "SystemApi.h"
#include "host/QZCore/HostControl.h"

char file_exists(const char* path, char) {
  if (path == nullptr) return 0;
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

CString GetTempDirectory() {
  char directory[MAX_PATH + 1] = {};
  // The system ends it with a backslash.
  const DWORD length = GetTempPathA(sizeof directory, directory);
  return length > MAX_PATH ? CString() : CString(directory);
}

#include "addin/working_files.h"

#include "platform/QZCore.h"
#include "platform/files.h"

bool WorkingFileExists(const CString& path) { return file_exists(path, 0) != 0; }

void RemoveStaleOutput(const CString& path) {
  if (WorkingFileExists(path)) RemoveStdFile(path);
}

// Host services without bookkeeping, so that only the code under measurement is measured.

#include <cstdio>
#include <string>

#include "platform/QZCore.h"
#include "platform/files.h"

FILE* m_fopen(const char*, int, const char* path, const char* mode) {
  return OpenStdFile(path, mode);
}

FILE* m_fopen_hl(const char*, int, const char* directory, const char* name, const char* mode,
                 bool* status) {
  const std::string directoryText = directory;
  const std::string nameText = name;
  const bool full = nameText.starts_with(directoryText);
  FILE* stream = OpenStdFile((full ? nameText : directoryText + nameText).c_str(), mode);
  *status = stream != nullptr;
  return stream;
}

void m_fclose(const char*, int, FILE* stream) { std::fclose(stream); }

char file_exists(const char* path, char) {
  FILE* stream = OpenStdFile(path, "rb");
  if (stream == nullptr) return 0;
  std::fclose(stream);
  return 1;
}

bool IsMetric() { return true; }

// Names are full paths.
CString GetTempDirectory() { return ""; }

double tol = 0.001;

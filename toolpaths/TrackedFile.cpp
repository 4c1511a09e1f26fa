#include "toolpaths/TrackedFile.h"

#include "platform/QZCore.h"

namespace {
constexpr char kSourceUnit[] = "QZTUTLA2";
}

TrackedFile::TrackedFile(const char* directory, const char* name, const char* mode) {
  // Some hosts write the status only when the open fails.
  bool status = true;
  Open(directory, name, mode, &status);
}

TrackedFile::TrackedFile(const char* directory, const char* name, const char* mode, bool* status) {
  Open(directory, name, mode, status);
}

void TrackedFile::Open(const char* directory, const char* name, const char* mode, bool* status) {
  m_stream = m_fopen_hl(kSourceUnit, __LINE__, directory, name, mode, status);
  m_open = *status && m_stream != nullptr;
}

void TrackedFile::Close() {
  if (m_stream != nullptr) m_fclose(kSourceUnit, __LINE__, m_stream);
  m_stream = nullptr;
  m_open = false;
}

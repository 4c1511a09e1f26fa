#pragma once

#include "MfcApi.h"

/// The process's current directory is `directory` for the life of this object and then again what
/// it was before. Neither switch is checked: a run goes on in whatever directory is current.
class CurrentDirectoryScope {
 public:
  explicit CurrentDirectoryScope(const CString& directory);
  CurrentDirectoryScope(const CurrentDirectoryScope&) = delete;
  CurrentDirectoryScope& operator=(const CurrentDirectoryScope&) = delete;
  ~CurrentDirectoryScope();

 private:
  char m_before[256];
};

#pragma once

#include "MfcApi.h"

/// Makes `directory` the process's current one while this object lives and puts the one before it
/// back at the end. Nothing is reported when a switch fails: the job is done from where it is then.
/// One directory cannot be put back: a current directory whose path has 256 characters or more is
/// not remembered, and the process then stays in `directory`.
class CurrentDirectoryScope {
 public:
  explicit CurrentDirectoryScope(const CString& directory);
  CurrentDirectoryScope(const CurrentDirectoryScope&) = delete;
  CurrentDirectoryScope& operator=(const CurrentDirectoryScope&) = delete;
  ~CurrentDirectoryScope();

 private:
  char m_before[256];
};

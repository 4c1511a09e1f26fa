#pragma once

#include "platform/SystemTypes.h"

/// Owner of a stream of the host's tracked file functions, opened and closed under the unit name
/// of the stock drivers.
class TrackedFile {
 public:
  /// `name` may be a full path. The outcome is the status that the host reports with the open.
  TrackedFile(const char* directory, const char* name, const char* mode);
  TrackedFile(const TrackedFile&) = delete;
  TrackedFile& operator=(const TrackedFile&) = delete;
  ~TrackedFile() { Close(); }

  bool IsOpen() const { return m_open; }
  FILE* Stream() const { return m_stream; }
  void Close();

 private:
  FILE* m_stream;
  bool m_open;
};

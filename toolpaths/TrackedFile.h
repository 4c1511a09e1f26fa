#pragma once

#include "platform/SystemTypes.h"

/// Owner of a stream of the host's tracked file functions, opened and closed under the unit name
/// of the stock drivers.
class TrackedFile {
 public:
  /// `name` may be a full path. The outcome is the status that the host reports with the open.
  TrackedFile(const char* directory, const char* name, const char* mode);
  /// The host writes the outcome into `*status`, where the caller has put what stands when the host
  /// writes nothing. There may be a stream with a false status, and none with a true one.
  TrackedFile(const char* directory, const char* name, const char* mode, bool* status);
  TrackedFile(const TrackedFile&) = delete;
  TrackedFile& operator=(const TrackedFile&) = delete;
  ~TrackedFile() { Close(); }

  bool IsOpen() const { return m_open; }
  FILE* Stream() const { return m_stream; }
  void Close();

 private:
  void Open(const char* directory, const char* name, const char* mode, bool* status);

  FILE* m_stream;
  bool m_open;
};

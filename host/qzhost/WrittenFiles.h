#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/qzhost/HostSystem.h"

namespace host {

/// Remembers the files of some directories, to tell later which are new or changed.
class WrittenFiles {
 public:
  /// Directories in the system's spelling; one that comes twice counts once.
  explicit WrittenFiles(const std::vector<std::string>& directories);

  /// Full paths, sorted, of what has been written since.
  std::vector<std::string> Paths() const;
  bool IsNew(const std::string& path) const;

 private:
  std::vector<std::string> m_directories;
  std::map<std::string, FileState> m_before;
};

}  // namespace host

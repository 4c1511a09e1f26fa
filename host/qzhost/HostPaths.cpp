#include "host/qzhost/HostPaths.h"

#include <algorithm>

#include "host/qzhost/HostSystem.h"

namespace host {

std::string AddInDirectory(const std::string& path) {
  std::string directory = FullPath(path);
  std::replace(directory.begin(), directory.end(), '/', '\\');
  if (directory.back() != '\\') directory += '\\';
  return directory;
}

}  // namespace host

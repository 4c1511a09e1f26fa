#include "host/qzhost/HostPaths.h"

#include <algorithm>

#include "host/qzhost/HostSystem.h"

namespace host {

std::string AddInDirectory(const std::string& path) {
  std::string directory = AddInFile(path);
  if (directory.back() != '\\') directory += '\\';
  return directory;
}

std::string AddInFile(const std::string& path) {
  std::string file = FullPath(path);
  std::replace(file.begin(), file.end(), '/', '\\');
  return file;
}

}  // namespace host

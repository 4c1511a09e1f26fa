#include "host/qzhost/WrittenFiles.h"

#include <algorithm>

namespace host {

namespace {

std::string In(const std::string& directory, const std::string& name) {
  return FullPath(directory + "/" + name);
}

}  // namespace

WrittenFiles::WrittenFiles(const std::vector<std::string>& directories) {
  for (const std::string& directory : directories) {
    const std::string full = FullPath(directory + "/");
    if (std::find(m_directories.begin(), m_directories.end(), full) == m_directories.end()) {
      m_directories.push_back(full);
    }
  }
  for (const std::string& directory : m_directories) {
    for (const std::string& name : FilesIn(directory)) {
      const std::string path = In(directory, name);
      m_before[path] = StateOfFile(path);
    }
  }
}

std::vector<std::string> WrittenFiles::Paths() const {
  std::vector<std::string> paths;
  for (const std::string& directory : m_directories) {
    for (const std::string& name : FilesIn(directory)) {
      if (IsNew(In(directory, name))) paths.push_back(In(directory, name));
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

bool WrittenFiles::IsNew(const std::string& path) const {
  const FileState now = StateOfFile(path);
  const auto before = m_before.find(FullPath(path));
  return now.exists && (before == m_before.end() || before->second != now);
}

}  // namespace host

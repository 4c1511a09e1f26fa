#include "host/qzhost/KernelMessages.h"

#include <cstdlib>
#include <fstream>

#include "host/qzhost/HostSystem.h"
#include "platform/QZCore.h"
#include "platform/files.h"

namespace host {

namespace {

constexpr const char* kVariable = "QZ_KERNEL_LOG";

std::string NamedFile() {
  const char* path = std::getenv(kVariable);
  return path == nullptr ? std::string() : std::string(path);
}

std::string TemporaryFile() {
  const std::string directory = GetTempDirectory().GetString();
  return FullPath(directory + "qzhost-" + std::to_string(ProcessNumber()) + ".log");
}

}  // namespace

KernelMessages::KernelMessages()
    : m_path(NamedFile()), m_temporary(m_path.empty()), m_sizeBefore(0) {
  if (m_temporary) {
    m_path = TemporaryFile();
    SetEnvironmentText(kVariable, m_path);
  }
  m_sizeBefore = StateOfFile(m_path).size;
}

KernelMessages::~KernelMessages() {
  if (!m_temporary) return;
  RemoveStdFile(m_path.c_str());
  SetEnvironmentText(kVariable, "");
}

std::vector<std::string> KernelMessages::Lines(const std::string& mark) const {
  std::vector<std::string> lines;
  std::ifstream file(m_path, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(m_sizeBefore));
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, mark.size(), mark) == 0) lines.push_back(line.substr(mark.size()));
  }
  return lines;
}

}  // namespace host

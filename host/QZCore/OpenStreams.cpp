#include "host/QZCore/OpenStreams.h"

#include <algorithm>

namespace {

std::string Place(const char* sourceUnit, int line) {
  return std::string(sourceUnit == nullptr ? "?" : sourceUnit) + ":" + std::to_string(line);
}

}  // namespace

void OpenStreams::Add(FILE* stream, const char* sourceUnit, int line, const std::string& path,
                      const char* mode) {
  m_entries.push_back({stream, path, Place(sourceUnit, line) + " " + path + " (" + mode + ")"});
}

bool OpenStreams::Remove(FILE* stream, const char* sourceUnit, int line) {
  const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                  [&](const Entry& entry) { return entry.stream == stream; });
  if (found == m_entries.end()) {
    m_strayCloses.push_back(Place(sourceUnit, line) + " closed a stream that is not open");
    return false;
  }
  m_entries.erase(found);
  return true;
}

std::vector<FILE*> OpenStreams::RemoveAllOn(const std::string& path) {
  std::vector<FILE*> streams;
  for (const Entry& entry : m_entries) {
    if (entry.path == path) streams.push_back(entry.stream);
  }
  m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                 [&path](const Entry& entry) { return entry.path == path; }),
                  m_entries.end());
  return streams;
}

std::string OpenStreams::Report() const {
  std::string report;
  for (const Entry& entry : m_entries) report += entry.opened + "\n";
  for (const std::string& stray : m_strayCloses) report += stray + "\n";
  return report;
}

#include "support/JobTest.h"

namespace support {

JobTest::JobTest()
    : m_job(m_root.Sub("Job1")),
      m_keep(m_root.Sub("Keep")),
      m_home(std::filesystem::current_path()) {
  host.events.Alias(m_home.string(), "home");
  host.events.Alias(m_job.string(), "job");
  host.events.Alias(m_keep.string(), "keep");
}

JobTest::~JobTest() { std::filesystem::current_path(m_home); }

CString JobTest::WorkDir() const { return AddinSpelling(m_job).c_str(); }

void JobTest::KeepCopiesApart() {
  std::string directory = AddinSpelling(m_keep);
  directory.pop_back();
  host.stockDataDirectory = directory;
}

bool JobTest::IsAtHome() const { return std::filesystem::current_path() == m_home; }

bool JobTest::IsInJob() const {
  // Seen from inside: the two spellings of a directory need not compare equal.
  WriteWholeFile(m_job / "here", "");
  const bool isHere = std::filesystem::exists("here");
  std::filesystem::remove(m_job / "here");
  return isHere;
}

}  // namespace support

#include "built/Workplace.h"

#include <gtest/gtest.h>
#include <utility>

#include "host/QZCore/HostControl.h"
#include "host/qzhost/AddInLibrary.h"
#include "host/qzhost/HostSystem.h"

std::string BuiltAddIn() {
  return (std::filesystem::path(host::ExecutableDirectory()) / ".." / "bin" / host::AddInFileName())
      .string();
}

Workplace::Workplace(BuiltJob job, const std::filesystem::path& directory)
    : m_job(std::move(job)),
      m_directory(directory.empty() ? m_own.Path() : directory),
      m_spelling(support::AddinSpelling(m_directory)) {
  std::filesystem::create_directories(m_directory);
  SetHostMetric(true);
  SetHostTolerance(0.001);
}

Workplace::~Workplace() { OverrideStockDataDirectory(""); }

void Workplace::Fill() const {
  OverrideStockDataDirectory(support::AddinSpelling(Copies()).c_str());
  for (const auto& directory : {Directory(), Copies()}) {
    for (const std::string& name : support::NamesIn(directory)) {
      std::filesystem::remove(directory / name);
    }
  }
  for (const auto& [name, bytes] : m_job.inputs) support::WriteWholeFile(Directory() / name, bytes);
}

int Workplace::Call(const host::AddIn& addIn, HostProgress* host) const {
  return m_job.call(addIn, m_spelling, host);
}

std::string Workplace::Output() const {
  return std::filesystem::exists(OutputPath()) ? support::ReadWholeFile(OutputPath()) : "none";
}

void Workplace::ExpectInputsWhole() const {
  for (const auto& [name, bytes] : m_job.inputs) {
    EXPECT_TRUE(support::ReadWholeFile(Directory() / name) == bytes) << name;
  }
}

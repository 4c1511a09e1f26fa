#pragma once

#include <filesystem>
#include <string>

#include "built/BuiltJobs.h"
#include "host/qzhost/AddIn.h"
#include "platform/HostProgress.h"
#include "support/TempDirectory.h"

/// The built add-in, beside the folder of the test programs.
std::string BuiltAddIn();

/// A directory for the runs of one job and one for the diagnostic copies, and a host that is set up
/// for them: metric, with a tolerance of 0.001.
class Workplace {
 public:
  /// The job lies in `directory`, which is made when it is not there, or in one of its own.
  explicit Workplace(BuiltJob job, const std::filesystem::path& directory = {});
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace();

  /// Writes the inputs; of an earlier run nothing is left. What is called next makes its copies
  /// here.
  void Fill() const;

  /// Runs the job; returns the flag.
  int Call(const host::AddIn& addIn, HostProgress* host) const;

  const BuiltJob& Job() const { return m_job; }
  const std::filesystem::path& Directory() const { return m_directory; }
  const std::filesystem::path& Copies() const { return m_copies.Path(); }

  std::filesystem::path OutputPath() const { return Directory() / m_job.output; }
  /// All bytes of the output; "none" when there is none.
  std::string Output() const;

  /// The test fails when an input is not what Fill() made it.
  void ExpectInputsWhole() const;

 private:
  BuiltJob m_job;
  support::TempDirectory m_own;
  support::TempDirectory m_copies;
  std::filesystem::path m_directory;
  std::string m_spelling;  // of that, as the add-in is given it
};

#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "MfcApi.h"
#include "support/RecordingHostProgress.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace support {

/// A working directory "Job1" and a directory "Keep" for diagnostic copies, with a TestHost that
/// knows them as "job" and "keep" and the process's current directory as "home". The registry does
/// not name "keep" unless the test says so. The save prefix of the job is "Job1_".
class JobTest : public ::testing::Test {
 protected:
  JobTest();
  ~JobTest() override;

  /// The working directory as the host hands it over.
  CString WorkDir() const;
  std::filesystem::path InJob(const std::string& name) const { return m_job / name; }
  std::filesystem::path InKeep(const std::string& name) const { return m_keep / name; }
  bool JobHas(const std::string& name) const { return std::filesystem::exists(InJob(name)); }
  /// Makes the registry name "keep", without a trailing backslash.
  void KeepCopiesApart();
  /// The process's current directory is the one the test began with.
  bool IsAtHome() const;
  /// It is the working directory.
  bool IsInJob() const;

 private:
  TempDirectory m_root;
  std::filesystem::path m_job;
  std::filesystem::path m_keep;
  std::filesystem::path m_home;

 protected:
  TestHost host;
  RecordingHostProgress progress;
};

}  // namespace support

#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "callbacks/UIDlgKernel.h"
#include "support/TempDirectory.h"

namespace support {

/// A job's fixture with the callback object that its export would make.
template <class Job>
class WithCallbacks : public Job {
 protected:
  WithCallbacks() {
    callbacks.SetHost(&this->progress);
    callbacks.SetWorkDir(this->WorkDir());
  }

  UIDlgKernel callbacks;
};

/// A job's fixture as an object, so that one test can make many jobs one after another. A class
/// made of it offers `bool Run()`.
template <class Job>
class Attempt : public Job {
 public:
  using Job::host;
  using Job::JobHas;
  using Job::kernel;
  using Job::progress;

  /// All files there are, by name.
  auto InJobNow() const { return FilesIn(this->InJob("")); }
  auto InKeepNow() const { return FilesIn(this->InKeep("")); }

  /// What holds after every job, however it ended.
  void ExpectTidy() {
    EXPECT_TRUE(this->IsAtHome());
    EXPECT_EQ(kernel.LivingObjects(), 0);
  }

 protected:
  /// Calls driver(callbacks); a callback object throws once in its life, so each gets its own.
  template <class Driver>
  bool RunWithCallbacks(Driver driver) {
    UIDlgKernel callbacks;
    callbacks.SetHost(&progress);
    callbacks.SetWorkDir(this->WorkDir());
    return driver(&callbacks);
  }

 private:
  void TestBody() override {}
};

/// The kernel's calls in a job that works.
template <class SomeAttempt>
std::vector<std::string> KernelCallsOf() {
  SomeAttempt attempt;
  EXPECT_TRUE(attempt.Run());
  return attempt.kernel.CallNames();
}

/// How often a job that works calls one of the functions that can fail.
template <class SomeAttempt>
int CallsOf(const std::string& function) {
  SomeAttempt attempt;
  EXPECT_TRUE(attempt.Run());
  return attempt.host.faults.Calls(function);
}

}  // namespace support

#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "callbacks/UIDlgKernel.h"
#include "support/NothrowBlocks.h"
#include "support/ScriptedKernel.h"
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
/// made of it offers `bool Run()`; `void ExpectNextOneWorks()`; and, static, what the loader leaves
/// to whoever throws through it: the streams left open by a throwing kernel call of that name
/// (`std::vector<std::string> StreamsLeftBy(const std::string&)`), each with a block of memory.
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

/// For each call of a function that can fail, a job in which that call fails. `check(attempt, k)`
/// runs the job and looks at what becomes of the `k`-th call's failure.
template <class SomeAttempt, class Check>
void FailEachCall(const std::string& function, Check check) {
  const int calls = CallsOf<SomeAttempt>(function);
  EXPECT_GT(calls, 0) << function;
  for (int k = 1; k <= calls; ++k) {
    SCOPED_TRACE(function + " " + std::to_string(k) + " of " + std::to_string(calls));
    SomeAttempt attempt;
    attempt.host.faults.FailCall(function, k);
    check(attempt, k);
    EXPECT_TRUE(attempt.host.OpenStreams().empty());
    EXPECT_EQ(attempt.kernel.LivingObjects(), 0);
    attempt.ExpectNextOneWorks();
  }
}

/// For each of the kernel's calls, a job in which it runs `script`, which throws. `check(attempt,
/// call)` runs the job and looks at what is special about it.
template <class SomeAttempt, class Check>
void StopInEachKernelCall(const ScriptedKernel::Script& script, Check check) {
  const auto calls = KernelCallsOf<SomeAttempt>();
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    const std::string& call = calls[k - 1];
    SCOPED_TRACE("stopped in call " + std::to_string(k) + ", " + call);
    SomeAttempt attempt;
    attempt.kernel.AtCall(static_cast<int>(k), script);
    check(attempt, call);
    EXPECT_EQ(attempt.kernel.CallNames().size(), k);
    EXPECT_EQ(attempt.host.OpenStreams(), SomeAttempt::StreamsLeftBy(call));
    EXPECT_EQ(TakeLostBlocks(), SomeAttempt::StreamsLeftBy(call).size());
    attempt.ExpectTidy();
    attempt.ExpectNextOneWorks();
  }
}

/// The same for a user who wants to stop at each notification in turn. The kernel says `caption`
/// inside every call, which makes two of them.
template <class SomeAttempt, class Check>
void CancelAtEachNotification(const std::string& caption, Check check) {
  const auto calls = KernelCallsOf<SomeAttempt>();
  for (std::size_t k = 1; k <= 2 * calls.size(); ++k) {
    const std::string& call = calls[(k - 1) / 2];
    SCOPED_TRACE("cancelled at notification " + std::to_string(k) + ", in " + call);
    SomeAttempt attempt;
    for (const std::string& each : calls) {
      attempt.kernel.At(each, ScriptedKernel::Progress(caption, 10));
    }
    attempt.progress.cancelOnlyAt = static_cast<int>(k);
    check(attempt, call);
    EXPECT_EQ(attempt.progress.Questions(), static_cast<int>(k));
    EXPECT_EQ(attempt.host.OpenStreams(), SomeAttempt::StreamsLeftBy(call));
    EXPECT_EQ(TakeLostBlocks(), SomeAttempt::StreamsLeftBy(call).size());
    attempt.ExpectTidy();
    attempt.progress.cancelOnlyAt = 0;
    attempt.ExpectNextOneWorks();
  }
}

}  // namespace support

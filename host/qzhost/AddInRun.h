#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/qzhost/ExitCode.h"
#include "host/qzhost/Report.h"

namespace host {

/// What one call of an operation of the add-in came to.
struct Outcome {
  bool flag = false;
  bool cancelled = false;  // set by whoever asked the user
  double seconds = 0.0;
  std::string stray;  // an exception that came out of the add-in
};

/// What is known after the run; the exit code and the reason follow from it.
struct Verdict {
  ExitCode code = kSuccess;
  std::string reason;  // empty on success
};

/// Calls the operation with a place for its flag, takes the time, catches what comes out of it.
Outcome CallAddIn(const std::function<void(bool* succeeded)>& operation);

/// The flag, the exit code, the reason, the time and the memory.
void AddRun(Report& report, const Outcome& outcome, const Verdict& verdict);

/// The kernel's warnings and the streams that the add-in has left open.
void AddRemarks(Report& report, const std::vector<std::string>& warnings);

/// files_written.
void AddWrittenFiles(Report& report, const std::vector<std::string>& paths);

/// Prints the report, says the reason on standard error, and returns the exit code.
int Conclude(const Report& report, const Verdict& verdict);

}  // namespace host

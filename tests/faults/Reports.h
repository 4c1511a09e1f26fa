#pragma once

#include <string>
#include <vector>

class UIDialog;

namespace faults {

/// What the kernel of these jobs asks of its dialog.
enum class Report {
  kCreateWait,
  kUpdateWait,
  kEndWait,
  kCreateProgress,
  kResetWait,
  kUpdateProgress,
  kNewStep,   // one that a status bar asks for Escape at
  kSameStep,  // one that it does not
  kEndProgress,
  kWarning,
  kIsActive
};

/// The reports inside a kernel call, in order: all there are where a kernel is made and where it
/// works, a short progress run elsewhere.
const std::vector<Report>& ReportsIn(const std::string& kernelCall);

/// Calls the operation.
void Send(Report report, UIDialog& dialog);

/// The kernel calls that report, by their numbers from 1: of calls of one name in a row the first
/// and the last.
std::vector<int> ReportingCalls(const std::vector<std::string>& kernelCalls);

/// What a fatal error, and a warning, say.
inline constexpr const char* kFatalText = "no way on";
inline constexpr const char* kWarningText = "a hole is left";

}  // namespace faults

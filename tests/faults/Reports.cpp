#include "faults/Reports.h"

#include <cstddef>
#include <set>

#include "callbacks/UIDialog.h"

namespace faults {

const std::vector<Report>& ReportsIn(const std::string& kernelCall) {
  static const std::vector<Report> all = {
      Report::kCreateWait, Report::kUpdateWait,     Report::kEndWait,  Report::kCreateProgress,
      Report::kNewStep,    Report::kUpdateProgress, Report::kSameStep, Report::kResetWait,
      Report::kNewStep,    Report::kEndProgress,    Report::kWarning,  Report::kIsActive};
  static const std::vector<Report> few = {Report::kCreateProgress, Report::kNewStep,
                                          Report::kEndProgress};
  static const std::set<std::string> places = {"IFSweep()",      "Run",           "Compare",
                                               "IFHeal()",       "heal.Run",      "IFSpinsil()",
                                               "spinsil.Run",    "IFSphoffset()", "sphoffset.Run",
                                               "silhouette.Run", "IFSilhouette()"};
  return places.contains(kernelCall) ? all : few;
}

void Send(Report report, UIDialog& dialog) {
  switch (report) {
    case Report::kCreateWait:
      return dialog.CreateWait("Reading");
    case Report::kUpdateWait:
      return dialog.UpdateWait("Offsetting (phase 2)... 17");
    case Report::kEndWait:
      return dialog.EndWait();
    case Report::kCreateProgress:
      return dialog.CreateProgress("Stitching", 10);
    case Report::kResetWait:
      return dialog.ResetWait("Positioning", 10);
    case Report::kUpdateProgress:
      return dialog.UpdateProgress("Generating");
    case Report::kNewStep:
    case Report::kSameStep:
      return dialog.SetProgress(5);
    case Report::kEndProgress:
      return dialog.EndProgress();
    case Report::kWarning:
      return dialog.ErrorMessage(kWarningText, false);
    case Report::kIsActive:
      dialog.IsActive();
      return;
  }
}

std::vector<int> ReportingCalls(const std::vector<std::string>& kernelCalls) {
  std::vector<int> numbers;
  for (std::size_t i = 0; i < kernelCalls.size(); ++i) {
    const bool isFirst = i == 0 || kernelCalls[i - 1] != kernelCalls[i];
    const bool isLast = i + 1 == kernelCalls.size() || kernelCalls[i + 1] != kernelCalls[i];
    if (isFirst || isLast) numbers.push_back(static_cast<int>(i) + 1);
  }
  return numbers;
}

}  // namespace faults

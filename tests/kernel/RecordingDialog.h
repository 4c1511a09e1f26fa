#pragma once

#include <string>
#include <vector>

#include "callbacks/UIDialog.h"

namespace kernel_test {

/// Records every callback as one line; throws Stop at call number `throwAt` (counted from 1), or at
/// the first warning. Where that does not come, Stop ends the run as the stock's rays are to be
/// made.
class RecordingDialog : public UIDialog {
 public:
  struct Stop {};

  void CreateWait(const char* message) override { Add(std::string("wait ") + message); }
  void UpdateWait(const char* message) override { Add(std::string("wait ") + message); }
  void EndWait() override { Add("end wait"); }
  void CreateProgress(const char* message, int total) override;
  void ResetWait(const char* message, int) override { Add(std::string("reset ") + message); }
  void UpdateProgress(const char* message) override { Add(std::string("update ") + message); }
  void SetProgress(int count) override { Add("count " + std::to_string(count)); }
  void EndProgress() override { Add("end"); }
  void ErrorMessage(const char* message, bool fatal) override;

  /// The texts of the stages in their order.
  std::vector<std::string> Stages() const;

  int throwAt = 0;
  bool throwAtWarning = false;
  std::vector<std::string> calls;
  std::vector<int> percentages;
  std::vector<std::string> warnings, errors;

 private:
  void Add(const std::string& line);
};

}  // namespace kernel_test

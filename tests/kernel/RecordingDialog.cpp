#include "RecordingDialog.h"

namespace kernel_test {

void RecordingDialog::Add(const std::string& line) {
  calls.push_back(line);
  if (static_cast<int>(calls.size()) == throwAt) throw Stop();
  if (throwAtWarning && line == "progress Initialising stock") throw Stop();
}

void RecordingDialog::CreateProgress(const char* message, int total) {
  percentages.push_back(total);
  Add("progress " + std::string(message));
}

void RecordingDialog::ErrorMessage(const char* message, bool fatal) {
  (fatal ? errors : warnings).push_back(message);
  Add(std::string(fatal ? "error " : "warning ") + message);
  if (throwAtWarning && !fatal) throw Stop();
}

std::vector<std::string> RecordingDialog::Stages() const {
  std::vector<std::string> stages;
  for (const std::string& call : calls) {
    if (call.rfind("progress ", 0) != 0) continue;
    const std::string text = call.substr(9);
    if (stages.empty() || stages.back() != text) stages.push_back(text);
  }
  return stages;
}

}  // namespace kernel_test

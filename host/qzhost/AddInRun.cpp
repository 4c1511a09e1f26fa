#include "host/qzhost/AddInRun.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <vector>

#include "host/QZCore/HostControl.h"
#include "host/qzhost/HostSystem.h"

namespace host {

namespace {

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = text.find('\n', start);
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

}  // namespace

Outcome CallAddIn(const std::function<void(bool* succeeded)>& operation) {
  Outcome outcome;
  const auto start = std::chrono::steady_clock::now();
  try {
    operation(&outcome.flag);
  } catch (const std::exception& error) {
    outcome.stray = error.what();
  }
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  outcome.seconds = elapsed.count();
  return outcome;
}

void AddRun(Report& report, const Outcome& outcome, const Verdict& verdict) {
  report.Add("flag", outcome.flag, "flag");
  report.Add("cancelled", outcome.cancelled);
  report.Add("exit_code", static_cast<int>(verdict.code));
  if (!verdict.reason.empty()) report.Add("reason", verdict.reason);
  report.Add("seconds", outcome.seconds, "seconds", Fixed(outcome.seconds, 3));
  const double mebibytes = static_cast<double>(PeakMemory()) / (1024.0 * 1024.0);
  report.Add("peak_memory", PeakMemory(), "peak memory", Fixed(mebibytes, 1) + " MiB");
}

void AddRemarks(Report& report, const std::vector<std::string>& warnings) {
  report.Add("warnings", warnings);
  for (const std::string& warning : warnings) report.AddLine("kernel: " + warning);
  const auto streams = SplitLines(OpenStreamReport().GetString());
  report.Add("open_streams", streams);
  for (const std::string& stream : streams) report.AddLine("stream left open: " + stream);
}

void AddWrittenFiles(Report& report, const std::vector<std::string>& paths) {
  report.Add("files_written", paths);
  for (const std::string& path : paths) report.AddLine("wrote " + path);
}

int Conclude(const Report& report, const Verdict& verdict) {
  report.Print();
  if (!verdict.reason.empty()) std::fprintf(stderr, "qzhost: %s\n", verdict.reason.c_str());
  return verdict.code;
}

}  // namespace host

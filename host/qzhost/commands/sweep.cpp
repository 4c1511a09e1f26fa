#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/PathInfoFile.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/JobRun.h"
#include "host/qzhost/KernelMessages.h"
#include "host/qzhost/MeshSummary.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/WrittenFiles.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

constexpr const char* kOperation = "qztutlSweepMultipleToolpathsFromStock";
const std::vector<std::string> kSweepFiles = {"BinaryPaths.tmp", "BinaryPaths.txt",
                                              "StockModelOutput.tmp"};

struct Job {
  std::string directory;  // in the system's spelling, with a trailing separator

  std::string Stock() const { return directory + "StockModelInput.tmp"; }
  std::string Result() const { return directory + "StockModelOutput.tmp"; }
  std::string PathFile(int number) const {
    return directory + "TmpPathInfo" + std::to_string(number) + ".tmp";
  }
};

// The stock is read before the add-in starts, so that one that cannot be read leaves the job as it
// is. A missing one is the add-in's own affair.
std::optional<MeshSummary> SummariseStock(const Job& job) {
  if (!StateOfFile(job.Stock()).exists) return std::nullopt;
  return Summarise(formats::ReadBinarySurface(job.Stock()));
}

Outcome RunAddIn(const Job& job, const Options& options) {
  const AddIn addIn(options.addIn);
  ProgressDisplay progress(options.quiet);
  return RunJobOperation(addIn, kOperation, job.directory, progress);
}

// The first thing wrong with the job's own files, empty when they can all be read.
std::string UnreadableInput(const Job& job) {
  try {
    formats::OpenForReading(job.Stock());
    for (int number = 0; StateOfFile(job.PathFile(number)).exists; ++number) {
      formats::ReadPathInfoFile(job.PathFile(number));
    }
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return "";
}

Verdict Judge(const Job& job, const Outcome& outcome, const KernelMessages& messages,
              const WrittenFiles& written, std::optional<MeshSummary>& result) {
  if (outcome.cancelled) return {kCancelled, "stopped by the user"};
  if (!outcome.flag) {
    return ExplainFalseFlag(outcome, messages.Errors(), UnreadableInput(job),
                            UnwritablePlace(job.directory, kSweepFiles));
  }
  if (!written.IsNew(job.Result())) {
    return {kNoResult, job.Result() + ": the add-in reports success but has made no new result"};
  }
  try {
    result = Summarise(formats::ReadBinarySurface(job.Result()));
  } catch (const formats::FileError& error) {
    return {kNoResult, error.what()};
  }
  return {};
}

// The add-in fills up a position that is cut short and goes on; nobody would see it in the result.
void AddDamage(Report& report, const Job& job) {
  const std::string damage = UnreadableInput(job);
  report.Add("damaged_input", damage);
  if (!damage.empty()) report.AddLine("damaged input: " + damage);
}

int Sweep(const std::string& path, const Options& options) {
  const Job job{OpenJobDirectory(path)};
  const auto stock = SummariseStock(job);
  const std::string copies = StockDataDirectory().GetString();
  const WrittenFiles written({job.directory, copies.empty() ? job.directory : copies});
  const KernelMessages messages;
  const Outcome outcome = RunAddIn(job, options);
  std::optional<MeshSummary> result;
  const Verdict verdict = Judge(job, outcome, messages, written, result);

  Report report(options);
  report.Add("command", "sweep");
  report.Add("job", job.directory, "job", job.directory);
  AddRun(report, outcome, verdict);
  if (stock.has_value()) AddSummary(report, "in", *stock, options);
  if (result.has_value()) AddSummary(report, "out", *result, options);
  if (stock.has_value() && result.has_value()) {
    AddVolume(report, "removed", stock->volume - result->volume, options);
  }
  if (result.has_value() && result->facets == 0) report.AddLine("nothing is left of the stock");
  AddWrittenFiles(report, written.Paths());
  if (verdict.code == kSuccess) AddDamage(report, job);
  AddRemarks(report, messages.Warnings());
  return Conclude(report, verdict);
}

}  // namespace

void AddSweepCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand("sweep", "Sweep the toolpaths of a job through its stock");
  const auto directory = std::make_shared<std::string>();
  command->add_option("JOBDIR", *directory, "The job's directory")->required();
  command->callback([directory, &options] {
    options.run = [directory, &options] { return Sweep(*directory, options); };
  });
}

}  // namespace host

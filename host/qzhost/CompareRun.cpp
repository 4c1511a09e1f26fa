#include "host/qzhost/CompareRun.h"

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/JobRun.h"
#include "host/qzhost/WrittenFiles.h"

namespace host {

namespace {

constexpr const char* kOperation = "qztutlSweepPartStockCompare";
constexpr const char* kPart = "PartFileToCompare.iff";
constexpr const char* kStock = "StockModelOutput.tmp";
constexpr const char* kBands = "TmpCompareInfo.tmp";
constexpr const char* kResult = "CompareResults.iff";

std::string UnreadableInput(const std::string& directory) {
  try {
    for (const char* name : {kPart, kStock, kBands}) formats::OpenForReading(directory + name);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return "";
}

Verdict NoResult(const std::string& directory, const CompareInput& input,
                 const KernelMessages& messages, const std::string& reason) {
  if (!input.part) {
    return {kNoResult, directory + kPart + ": there is no part, so nothing was compared"};
  }
  const auto errors = messages.Errors();
  return {kNoResult, errors.empty() ? reason : errors.back()};
}

Verdict Judge(const std::string& directory, const CompareInput& input,
              const KernelMessages& messages, const WrittenFiles& written, CompareResult& result) {
  if (result.outcome.cancelled) return {kCancelled, "stopped by the user"};
  if (!result.outcome.flag) {
    return ExplainFalseFlag(result.outcome, messages.Errors(), UnreadableInput(directory),
                            UnwritablePlace(directory, {kResult}));
  }
  const std::string path = directory + kResult;
  if (!written.IsNew(path)) {
    return NoResult(directory, input, messages,
                    path + ": the add-in reports success but has made no new result");
  }
  try {
    result.mesh = formats::ReadBinarySurface(path);
  } catch (const formats::FileError& error) {
    return NoResult(directory, input, messages, error.what());
  }
  return {};
}

void Measure(const CompareInput& input, ProgressDisplay& progress, CompareResult& result) {
  if (!input.part || !input.stock) return;
  CString text("Measuring");
  progress.ShowProgress(&text, 0);
  const FacetTree stock(*input.stock);
  // The result's surface is the part's, in many more facets.
  result.statistics =
      MeasureDeviations(*input.part, stock, [&progress] { return progress.IsCancelled(); });
  if (input.bands) result.bands = MeasureBands(result.mesh, *input.bands, stock);
  if (!result.statistics->stopped) return;
  result.statistics.reset();
  result.verdict = {kCancelled, "stopped by the user"};
  result.outcome.cancelled = true;
}

}  // namespace

CompareInput ReadCompareInput(const std::string& directory) {
  const auto isThere = [&](const char* name) { return StateOfFile(directory + name).exists; };
  CompareInput input;
  if (isThere(kPart)) input.part = formats::ReadBinarySurface(directory + kPart);
  if (isThere(kStock)) input.stock = formats::ReadBinarySurface(directory + kStock);
  if (isThere(kBands)) input.bands = formats::ReadCompareBands(directory + kBands);
  return input;
}

void WriteCompareInput(const std::string& directory, const CompareInput& input) {
  formats::WriteBinarySurface(directory + kPart, *input.part);
  formats::WriteBinarySurface(directory + kStock, *input.stock);
  formats::WriteCompareBands(directory + kBands, *input.bands);
}

CompareResult RunCompare(const std::string& directory, const CompareInput& input,
                         const AddIn& addIn, const KernelMessages& messages,
                         ProgressDisplay& progress) {
  const WrittenFiles written({directory});
  CompareResult result;
  result.outcome = RunJobOperation(addIn, kOperation, directory, progress);
  result.verdict = Judge(directory, input, messages, written, result);
  if (result.verdict.code == kSuccess) Measure(input, progress, result);
  return result;
}

}  // namespace host

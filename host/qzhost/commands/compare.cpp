#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "formats/FileError.h"
#include "formats/meshes/MeshFile.h"
#include "host/QZCore/HostControl.h"
#include "host/files/MeshOutput.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/CompareReport.h"
#include "host/qzhost/CompareRun.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/JobRun.h"
#include "host/qzhost/MeshTarget.h"
#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/TemporaryDirectory.h"
#include "host/qzhost/WrittenFiles.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

struct CompareSettings {
  std::string job;
  std::string part;
  std::string stock;
  std::string output;
  std::string csv;
  std::vector<std::string> bands;
  std::optional<int> stockColour;
  CompareLimits limits;
};

formats::CompareBands BandsOf(const CompareSettings& settings) {
  formats::CompareBands bands;
  bands.stockColour = static_cast<std::uint32_t>(settings.stockColour.value_or(0));
  for (const std::string& text : settings.bands) {
    const char* const end = text.data() + text.size();
    double limit = 0;
    int colour = 0;
    const auto afterLimit = std::from_chars(text.data() + (text[0] == '+' ? 1 : 0), end, limit);
    const bool hasLimit = afterLimit.ec == std::errc() && afterLimit.ptr != end &&
                          *afterLimit.ptr == '=' && std::isfinite(limit);
    const auto afterColour =
        hasLimit ? std::from_chars(afterLimit.ptr + 1, end, colour) : std::from_chars_result{};
    if (!hasLimit || afterColour.ec != std::errc() || afterColour.ptr != end || colour < 0 ||
        colour > 255) {
      throw CommandError("--band: " + text + " is not LIMIT=COLOUR, a length and 0 to 255");
    }
    if (std::count(bands.distances.begin(), bands.distances.end(), limit) != 0) {
      throw CommandError("--band: two bands end at " + text.substr(0, text.find('=')));
    }
    bands.distances.push_back(limit);
    bands.colours.push_back(static_cast<std::uint32_t>(colour));
  }
  return bands;
}

void WriteCsv(const CompareSettings& settings, CompareResult& result,
              std::vector<std::string>& written) {
  if (settings.csv.empty() || !result.statistics) return;
  WriteComparisonCsv(settings.csv, result);
  written.push_back(settings.csv);
}

// What both forms say, once it is known which files were written.
int Finish(Report& report, const CompareSettings& settings, CompareResult& result,
           std::vector<std::string> written, const KernelMessages& messages,
           const Options& options) {
  WriteCsv(settings, result, written);
  JudgeLimits(settings.limits, result);
  AddRun(report, result.outcome, result.verdict);
  AddComparison(report, result, options);
  AddWrittenFiles(report, written);
  AddRemarks(report, messages.Warnings());
  return Conclude(report, result.verdict);
}

void RefuseCsvOver(const CompareSettings& settings, const std::vector<std::string>& inputs) {
  if (settings.csv.empty()) return;
  for (const std::string& input : inputs) RefuseOutputOverInput(input, settings.csv);
}

int CompareJob(const CompareSettings& settings, const Options& options) {
  const std::string directory = OpenJobDirectory(settings.job);
  std::vector<std::string> files = FilesIn(directory);
  for (std::string& file : files) file.insert(0, directory);
  RefuseCsvOver(settings, files);
  const CompareInput input = ReadCompareInput(directory);
  const std::string copies = StockDataDirectory().GetString();
  const WrittenFiles written({directory, copies.empty() ? directory : copies});
  const KernelMessages messages;
  const AddIn addIn(options.addIn);
  ProgressDisplay progress(options.quiet);
  CompareResult result = RunCompare(directory, input, addIn, messages, progress);
  Report report(options);
  report.Add("command", "compare");
  report.Add("job", directory, "job", directory);
  return Finish(report, settings, result, written.Paths(), messages, options);
}

int CompareFiles(const CompareSettings& settings, const Options& options) {
  RefuseOutputOverInput(settings.part, settings.output);
  RefuseOutputOverInput(settings.stock, settings.output);
  RefuseCsvOver(settings, {settings.part, settings.stock, settings.output});
  CompareInput input;
  input.bands = BandsOf(settings);
  input.part = formats::ReadMesh(settings.part);
  input.stock = formats::ReadMesh(settings.stock);
  const KernelMessages messages;
  const AddIn addIn(options.addIn);
  // Listens ahead of the first temporary file: an interrupt that nobody listens to would leave it.
  ProgressDisplay progress(options.quiet);
  MeshTarget target(settings.output);
  const TemporaryDirectory place;
  const std::string directory = place.File("");
  WriteCompareInput(directory, input);
  CompareResult result = RunCompare(directory, input, addIn, messages, progress);
  Report report(options);
  report.Add("command", "compare");
  report.Add("part", settings.part, "part", settings.part);
  report.Add("stock", settings.stock, "stock", settings.stock);
  report.Add("output", settings.output, "output", settings.output);
  std::vector<std::string> written;
  if (result.verdict.code == kSuccess) {
    target.Put(result.mesh);
    written.push_back(settings.output);
  }
  return Finish(report, settings, result, written, messages, options);
}

int Compare(const CompareSettings& settings, const Options& options) {
  const bool byFiles = !settings.part.empty() || !settings.stock.empty() ||
                       !settings.output.empty() || !settings.bands.empty() ||
                       settings.stockColour.has_value();
  if (!settings.job.empty() && byFiles) {
    throw CommandError("JOBDIR has its own part, stock and bands (try --help)");
  }
  if (!byFiles) {
    if (settings.job.empty()) throw CommandError("JOBDIR or --part is required (try --help)");
    return CompareJob(settings, options);
  }
  for (const auto& [name, missing] :
       {std::pair("--part", settings.part.empty()), std::pair("--stock", settings.stock.empty()),
        std::pair("--band", settings.bands.empty()), std::pair("-o", settings.output.empty())}) {
    if (missing) throw CommandError(std::string(name) + " is required (try --help)");
  }
  return CompareFiles(settings, options);
}

}  // namespace

void AddCompareCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand(
      "compare", "Colour a part by its distance from a stock, and say how far they are apart");
  const auto settings = std::make_shared<CompareSettings>();
  command->add_option("JOBDIR", settings->job, "A job's directory with part, stock and bands");
  command->add_option("--part", settings->part, "The part: .iff, .tmp, .stl, .ply, .obj, .off");
  command->add_option("--stock", settings->stock, "The stock, of these formats; a closed solid");
  command
      ->add_option("--band", settings->bands,
                   "LIMIT=COLOUR: deviations up to LIMIT, and above the limit before it, get this "
                   "colour (0 to 255)")
      ->option_text("LIMIT=COLOUR ...");
  command
      ->add_option("--stock-colour,--stock-color", settings->stockColour,
                   "Colour of deviations above the last limit (0)")
      ->check(CLI::Range(0, 255));
  command->add_option("-o,--output", settings->output, "The coloured part, of the formats above");
  command
      ->add_option("--max-gouge", settings->limits.gouge,
                   "Exit code 1 when the part is anywhere cut deeper than this")
      ->check(NumberFromZero());
  command
      ->add_option("--max-excess", settings->limits.excess,
                   "Exit code 1 when more than this is left standing anywhere")
      ->check(NumberFromZero());
  command->add_option("--csv", settings->csv, "Write the figures as a table, too");
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Compare(*settings, options); };
  });
}

}  // namespace host

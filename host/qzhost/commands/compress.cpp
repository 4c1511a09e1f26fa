#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "formats/OpenFile.h"
#include "host/measure/FarthestPoint.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostPaths.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/JobRun.h"
#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/StatusProgress.h"
#include "host/qzhost/SurfaceOperation.h"
#include "host/qzhost/WrittenFiles.h"
#include "host/qzhost/commands/commands.h"
#include "platform/PathText.h"

namespace host {

namespace {

using CompressExport = void(CString directory, CString input, CString output,
                            HostProgress* progress, double tolerance, bool* succeeded);

// What every compression writes into its job's directory.
const std::vector<std::string> kCompressionFiles = {"BinaryPaths.tmp", "BinaryPaths.txt",
                                                    "ErrorCapture.txt"};

struct CompressSettings {
  std::string job;
  std::string input;
  std::string output;
  double tolerance = 0.0;
};

// How far each surface gets from the other.
struct Deviations {
  FarthestPoint::Found resultFromInput;
  FarthestPoint::Found inputFromResult;
  bool measured = false;
};

constexpr FarthestPoint::Effort kEffort = {1e-3, 100'000};

// The add-in looks for the input in the job's directory.
std::string InputPath(const std::string& directory, const std::string& name) {
  const std::string native = formats::NativePath(name);
  return PathFromText(native).is_absolute() ? native : directory + native;
}

// Not told apart by capitals either, as on some systems. The file need not be there yet.
bool IsInPlaceOf(const std::string& output, const std::string& directory, std::string name) {
  const std::filesystem::path path = PathFromText(FullPath(output));
  const std::filesystem::path scratch = PathFromText(directory + name);
  std::error_code error;
  if (std::filesystem::equivalent(path, scratch, error)) return true;
  const auto lower = [](std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
  };
  return lower(TextFromPath(path.filename())) == lower(std::move(name)) &&
         std::filesystem::equivalent(path.parent_path(), scratch.parent_path(), error);
}

void RefuseScratchFile(const std::string& directory, const std::string& output) {
  for (const std::string& name : kCompressionFiles) {
    if (IsInPlaceOf(output, directory, name)) {
      throw CommandError(output + ": the compression writes this file itself");
    }
  }
}

FarthestPoint::Found Farthest(const formats::Mesh& from, const formats::Mesh& to) {
  const FacetTree tree(to);
  const auto stopAsked = [] { return StatusProgress::Current()->AskedToStop(); };
  return FarthestPoint(from, tree, stopAsked).Search(Side::kAny, {}, kEffort);
}

void Measure(const formats::Mesh& input, const formats::Mesh& result, Deviations& deviations) {
  if (input.facets.empty() || result.facets.empty()) return;
  StatusProgress::Current()->Show("Measuring", 0);
  deviations.resultFromInput = Farthest(result, input);
  deviations.inputFromResult = Farthest(input, result);
  deviations.measured = true;
}

SurfaceOperation OperationOf(const CompressSettings& settings, const std::string& directory,
                             Deviations& deviations) {
  SurfaceOperation operation;
  operation.caption = "Compressing";
  operation.input = InputPath(directory, settings.input);
  operation.output = settings.output;
  operation.countResultByNumber = true;
  operation.call = [&settings, directory](const AddIn& addIn, char* input, char* output,
                                          bool* succeeded) {
    StatusHostProgress progress;
    // Full paths: the add-in looks for a relative output in two different directories.
    addIn.Export<CompressExport>("qztutlStockModelCompress")(
        CString(AddInDirectory(directory).c_str()), CString(input), CString(output), &progress,
        settings.tolerance, succeeded);
  };
  operation.inspect = [&deviations](const formats::Mesh& input, const formats::Mesh& result) {
    Measure(input, result, deviations);
  };
  operation.explain = [directory] {
    const std::string place = UnwritablePlace(directory, kCompressionFiles);
    return place.empty() ? place : place + ": cannot be written";
  };
  return operation;
}

nlohmann::ordered_json DeviationObject(const FarthestPoint::Found& found) {
  return {{"distance", found.distance}, {"bound", found.bound}, {"place", found.place}};
}

std::string DeviationText(const FarthestPoint::Found& found, const Options& options) {
  std::string text = Fixed(found.distance, 6) + " " + UnitsName(options.units) +
                     ", nowhere above " + Fixed(found.bound, 6);
  if (found.distance == 0) return text;
  return text + ", at (" + Fixed(found.place[0], 4) + ", " + Fixed(found.place[1], 4) + ", " +
         Fixed(found.place[2], 4) + ")";
}

void AddDeviations(Report& report, const Deviations& deviations, const CompressSettings& settings,
                   const Options& options) {
  if (!deviations.measured) return;
  report.Add("result_from_input", DeviationObject(deviations.resultFromInput), "result from input",
             DeviationText(deviations.resultFromInput, options));
  report.Add("input_from_result", DeviationObject(deviations.inputFromResult), "input from result",
             DeviationText(deviations.inputFromResult, options));
  const double largest =
      std::max(deviations.resultFromInput.distance, deviations.inputFromResult.distance);
  report.Add("within_tolerance", largest <= settings.tolerance);
  if (largest > settings.tolerance) {
    report.AddLine("the surface has moved by more than the tolerance");
  }
}

std::vector<std::string> FilesWritten(const WrittenFiles& written, const CompressSettings& settings,
                                      const SurfaceResult& result) {
  std::vector<std::string> paths = written.Paths();
  const std::string output = FullPath(settings.output);
  if (result.verdict.code == kSuccess &&
      std::find(paths.begin(), paths.end(), output) == paths.end()) {
    paths.push_back(output);
  }
  return paths;
}

int Compress(const CompressSettings& settings, const Options& options) {
  const std::string directory = OpenJobDirectory(settings.job);
  RefuseScratchFile(directory, settings.output);
  Deviations deviations;
  const SurfaceOperation operation = OperationOf(settings, directory, deviations);
  const WrittenFiles written({directory});
  const SurfaceResult result = RunSurfaceOperation(operation, options);
  if (result.verdict.code != kSuccess) deviations.measured = false;
  Report report(options);
  report.Add("command", "compress");
  report.Add("job", directory, "job", directory);
  report.Add("tolerance", settings.tolerance);
  AddSurfaceResult(report, operation, result, options);
  AddDeviations(report, deviations, settings, options);
  AddWrittenFiles(report, FilesWritten(written, settings, result));
  return Conclude(report, result.verdict);
}

}  // namespace

void AddCompressCommand(CLI::App& app, Options& options) {
  auto* command =
      app.add_subcommand("compress", "Store a surface with fewer facets, within a tolerance");
  const auto settings = std::make_shared<CompressSettings>();
  command->add_option("JOBDIR", settings->job, "The job's directory; two scratch files go there")
      ->required();
  command
      ->add_option("IN", settings->input,
                   "The mesh, of any format; a relative name is one in JOBDIR")
      ->required();
  command
      ->add_option("OUT", settings->output,
                   "The mesh to write; a relative name counts from the current directory")
      ->required();
  command
      ->add_option("--tolerance", settings->tolerance,
                   "How far the surface may move, in length units")
      ->check(NumberFromZero())
      ->required();
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Compress(*settings, options); };
  });
}

}  // namespace host

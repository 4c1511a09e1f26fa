#include "host/jobs/NewJob.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

#include "formats/FileError.h"
#include "formats/MeshMeasures.h"
#include "formats/OpenFile.h"
#include "formats/programs/AptProgram.h"
#include "formats/programs/GCodeProgram.h"
#include "formats/programs/ProgramPaths.h"
#include "formats/programs/ToolTable.h"
#include "host/jobs/JobFiles.h"
#include "host/jobs/KernelLimits.h"
#include "host/jobs/StagedJob.h"
#include "host/jobs/Stock.h"
#include "platform/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

void RequireFree(const NewJobSettings& settings) {
  const fs::path directory = formats::LibraryPath(settings.directory);
  if (fs::exists(directory) && !fs::is_directory(directory)) {
    throw formats::FileError(settings.directory + ": is no directory");
  }
  const auto files = JobFilesIn(directory);
  if (!files.empty() && !settings.force) {
    throw formats::FileError(settings.directory + ": holds a job already (" +
                             TextFromPath(files.front().filename()) +
                             "); --force puts the new one in its place");
  }
}

// With --force a job's own files go, and none of them may be what the new one is made from.
void RequireInputsElsewhere(const NewJobSettings& settings) {
  for (const fs::path& replaced : ReplacedFilesIn(formats::LibraryPath(settings.directory))) {
    for (const std::string& input : {settings.stock, settings.program, settings.tools}) {
      std::error_code error;
      if (fs::equivalent(formats::LibraryPath(input), replaced, error) && !error) {
        throw formats::FileError(input + ": the new job would take this file's place");
      }
    }
  }
}

formats::Mesh CheckedStock(const std::string& description) {
  formats::Mesh stock = StockFrom(description);
  if (const std::string reason = WhyStockCannotBeCut(stock); !reason.empty()) {
    throw formats::FileError(description + ": the stock " + reason);
  }
  return stock;
}

// How far chords may stray from their arcs. A path tolerance of 0 counts as the sweep tolerance,
// and that as a ten-thousandth of the stock's diagonal.
double ArcTolerance(const NewJobSettings& settings, const formats::Mesh& stock) {
  if (settings.pathTolerance > 0) return settings.pathTolerance;
  if (settings.tolerance > 0) return settings.tolerance;
  double squares = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto [low, high] =
        std::minmax_element(stock.vertices.begin(), stock.vertices.end(),
                            [axis](const auto& a, const auto& b) { return a[axis] < b[axis]; });
    squares += ((*high)[axis] - (*low)[axis]) * ((*high)[axis] - (*low)[axis]);
  }
  return std::sqrt(squares) * 1e-4;
}

formats::PathSettings PathSettingsOf(const NewJobSettings& settings) {
  return {settings.colour, settings.rapidColour, settings.tolerance, settings.pathTolerance,
          settings.compressTolerance};
}

formats::GCodeOptions ProgramOptionsOf(const NewJobSettings& settings, const formats::Mesh& stock) {
  formats::GCodeOptions options;
  options.metric = settings.metric;
  options.arcTolerance = ArcTolerance(settings, stock);
  options.firstTool = settings.firstTool;
  options.strict = settings.strict;
  return options;
}

NewJobPath Describe(const formats::ProgramPath& path) {
  const auto doubles = formats::DoublesPerPosition(path.record.pathType);
  return {0,
          path.tool,
          path.toolName,
          path.record.colour,
          path.rapid,
          static_cast<std::int64_t>(path.record.cuts.front().coordinates.size() / doubles)};
}

formats::ToolTable ToolsOf(const NewJobSettings& settings) {
  if (settings.tools.empty()) return {};
  return formats::ReadToolTable(settings.tools, settings.metric);
}

formats::AptReport RunProgram(const NewJobSettings& settings, const formats::GCodeOptions& options,
                              formats::ProgramPaths& paths) {
  if (settings.language == ProgramLanguage::kApt) {
    return formats::RunAptFile(settings.program, options, paths);
  }
  formats::AptReport report;
  static_cast<formats::GCodeReport&>(report) =
      formats::RunGCodeFile(settings.program, options, paths);
  return report;
}

void RequireCuttable(const NewJobSettings& settings, const formats::ProgramPath& path) {
  const std::string reason = WhyPathCannotBeCut(path.record);
  if (reason.empty()) return;
  const std::string& where = settings.tools.empty() ? settings.program : settings.tools;
  throw formats::FileError(where + ": tool " + std::to_string(path.tool) + " " + reason);
}

void SortByNumber(const std::vector<std::int64_t>& numbers, std::vector<NewJobPath>& paths) {
  for (std::size_t i = 0; i < paths.size(); ++i) paths[i].number = numbers[i];
  std::sort(paths.begin(), paths.end(),
            [](const NewJobPath& a, const NewJobPath& b) { return a.number < b.number; });
}

}  // namespace

NewJobResult MakeJob(const NewJobSettings& settings) {
  RequireFree(settings);
  RequireInputsElsewhere(settings);
  NewJobResult result;
  result.stock = CheckedStock(settings.stock);
  const auto options = ProgramOptionsOf(settings, result.stock);
  const auto tools = ToolsOf(settings);
  StagedJob job(settings.directory);
  job.WriteStock(result.stock);
  formats::ProgramPaths paths(tools, PathSettingsOf(settings),
                              [&](const formats::ProgramPath& path) {
                                RequireCuttable(settings, path);
                                job.AddPath(path);
                                result.paths.push_back(Describe(path));
                              });
  result.program = RunProgram(settings, options, paths);
  paths.Finish();
  if (result.paths.empty()) {
    throw formats::FileError(settings.program + ": no move of a tool between known positions");
  }
  SortByNumber(job.Numbering(), result.paths);
  result.files = job.Place();
  return result;
}

}  // namespace host

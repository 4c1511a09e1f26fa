#include <memory>
#include <string>

#include "host/jobs/NewJob.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/MeshSummary.h"
#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

// What the command line gives; what it leaves open depends on the units, which may stand behind.
struct NewJobArguments {
  NewJobSettings job;
  std::string gcode;
  std::string apt;
  std::optional<double> tolerance;
  std::optional<double> pathTolerance;
};

constexpr double kToleranceInMillimetres = 0.025;
constexpr double kToleranceInInches = 0.001;
constexpr std::size_t kPathsShown = 20;
constexpr std::size_t kLinesShown = 10;

void ChooseProgram(const NewJobArguments& settings, NewJobSettings& job) {
  const bool isApt = !settings.apt.empty();
  job.language = isApt ? ProgramLanguage::kApt : ProgramLanguage::kGCode;
  job.program = isApt ? settings.apt : settings.gcode;
  if (job.program.empty()) throw CommandError("--gcode or --apt is required (try --help)");
  if (!isApt && job.tools.empty()) {
    throw CommandError("--tools is required with --gcode (try --help)");
  }
}

NewJobSettings Complete(const NewJobArguments& settings, const Options& options) {
  NewJobSettings job = settings.job;
  ChooseProgram(settings, job);
  job.metric = options.units == Units::kMillimetres;
  job.tolerance =
      settings.tolerance.value_or(job.metric ? kToleranceInMillimetres : kToleranceInInches);
  job.pathTolerance = settings.pathTolerance.value_or(job.tolerance);
  return job;
}

nlohmann::ordered_json PathObject(const NewJobPath& path) {
  return {{"number", path.number}, {"tool", path.tool},   {"tool_name", path.toolName},
          {"colour", path.colour}, {"rapid", path.rapid}, {"positions", path.positions}};
}

std::string PathText(const NewJobPath& path) {
  std::string text = "path " + std::to_string(path.number) + ": tool " + std::to_string(path.tool);
  if (!path.toolName.empty()) text += " (" + path.toolName + ")";
  return text + (path.rapid ? ", rapids" : "") + ", colour " + std::to_string(path.colour) + ", " +
         std::to_string(path.positions) + " positions";
}

void AddPaths(Report& report, const std::vector<NewJobPath>& paths) {
  auto list = nlohmann::ordered_json::array();
  for (const NewJobPath& path : paths) list.push_back(PathObject(path));
  report.Add("paths", std::move(list), "paths", std::to_string(paths.size()));
  for (std::size_t i = 0; i < paths.size() && i < kPathsShown; ++i) {
    report.AddLine(PathText(paths[i]));
  }
  if (paths.size() > kPathsShown) {
    report.AddLine("and " + std::to_string(paths.size() - kPathsShown) + " paths more");
  }
}

std::string PointText(const formats::ToolTip& tip) {
  return "(" + Fixed(tip[0], 4) + ", " + Fixed(tip[1], 4) + ", " + Fixed(tip[2], 4) + ")";
}

void AddProgram(Report& report, const formats::GCodeReport& program, const Options& options) {
  const std::string unit = std::string(" ") + UnitsName(options.units);
  report.Add("program_lines", program.lines, "program lines");
  report.Add("deleted_lines", program.deletedLines);
  report.Add("tool_loads", program.toolLoads, "tool loads");
  report.Add("moves", program.rapids + program.feeds + program.arcs, "moves");
  report.Add("rapids", program.rapids, "rapids");
  report.Add("feeds", program.feeds, "straight cuts");
  report.Add("arcs", program.arcs, "arcs",
             std::to_string(program.arcs) + " in " + std::to_string(program.chords) + " chords");
  report.Add("chords", program.chords);
  report.Add("holes", program.holes, "holes");
  report.Add("feed_length", program.feedLength, "cutting length",
             Fixed(program.feedLength, 3) + unit);
  report.Add("rapid_length", program.rapidLength, "rapid length",
             Fixed(program.rapidLength, 3) + unit);
  report.Add("box", {{"low", program.low}, {"high", program.high}}, "box of positions",
             PointText(program.low) + " to " + PointText(program.high));
  report.Add("moves_before_start", program.beforeStart);
  if (program.beforeStart != 0) {
    report.AddLine("moves left out, the position not being fully given: " +
                   std::to_string(program.beforeStart));
  }
  report.Add("rapids_without_tool", program.withoutTool);
}

void AddInserts(Report& report, const formats::AptReport& program) {
  auto list = nlohmann::ordered_json::array();
  std::size_t shown = 0;
  for (const auto& note : program.inserts) {
    list.push_back({{"line", note.line}, {"text", note.text}});
    if (++shown <= kLinesShown) {
      report.AddLine("line " + std::to_string(note.line) + " says: " + note.text);
    }
  }
  const auto left = program.insertCount - static_cast<std::int64_t>(kLinesShown);
  if (left > 0) {
    report.AddLine("and " + std::to_string(left) + " inserts more");
  }
  report.Add("inserts", std::move(list));
}

void AddUnknown(Report& report, const formats::GCodeReport& program) {
  auto list = nlohmann::ordered_json::array();
  for (const auto& unknown : program.unknown) {
    list.push_back({{"word", unknown.word}, {"count", unknown.count}, {"lines", unknown.lines}});
    report.AddLine("not understood: " + unknown.word + " in line " +
                   formats::UnknownLines(unknown, kLinesShown));
  }
  report.Add("not_understood", std::move(list));
}

int NewJob(const NewJobArguments& settings, const Options& options) {
  const NewJobResult result = MakeJob(Complete(settings, options));
  Report report(options);
  report.Add("command", "new-job");
  report.Add("job", FullPath(settings.job.directory), "job", FullPath(settings.job.directory));
  report.Add("exit_code", static_cast<int>(kSuccess));
  AddSummary(report, "in", Summarise(result.stock), options);
  AddProgram(report, result.program, options);
  AddPaths(report, result.paths);
  AddInserts(report, result.program);
  AddUnknown(report, result.program);
  report.Add("peak_memory", PeakMemory());
  report.Add("files_written", result.files, "files written", std::to_string(result.files.size()));
  report.Print();
  return kSuccess;
}

void AddSettings(CLI::App& command, NewJobArguments& settings) {
  NewJobSettings& job = settings.job;
  command.add_option("DIR", job.directory, "The job's directory; made when it is not there")
      ->required();
  command
      .add_option("--stock", job.stock,
                  "A mesh file (binary surface, STL, PLY, OBJ, OFF), or box:x0,y0,z0,x1,y1,z1")
      ->required();
  auto* gcode = command.add_option("--gcode", settings.gcode, "The machining program, in G-code");
  auto* apt = command.add_option("--apt", settings.apt,
                                 "The machining program, as APT cutter-location text");
  apt->excludes(gcode);
  command.add_option(
      "--tools", job.tools,
      "The tool table (JSON); needed with --gcode, with --apt it goes before CUTTER");
  command
      .add_option("--colour,--color", job.colour,
                  "Colour of what is cut, for tools whose entry has none of its own")
      ->check(CLI::Range(0, 255))
      ->capture_default_str();
  command
      .add_option("--rapid-colour,--rapid-color", job.rapidColour,
                  "Rapids become paths of their own in this colour, so that one that cuts shows")
      ->check(CLI::Range(0, 255));
  command
      .add_option("--tolerance", settings.tolerance,
                  "Sweep tolerance (0.025 mm or 0.001 inch unless given)")
      ->check(NumberFromZero());
  command
      .add_option("--path-tolerance", settings.pathTolerance,
                  "How far the chords of arcs may stray (the sweep tolerance unless given)")
      ->check(NumberFromZero());
  command
      .add_option("--compress-tolerance", job.compressTolerance,
                  "How far the kernel may move the surface to merge facets")
      ->check(NumberFromZero())
      ->capture_default_str();
  command.add_option("--tool", job.firstTool, "Number of the tool in the spindle at the start")
      ->check(CLI::Range(1, 999'999'999));
  command.add_flag("--strict", job.strict, "A word that is not understood is an error");
  command.add_flag("--force", job.force, "Put the job in the place of one that is there");
}

}  // namespace

void AddNewJobCommand(CLI::App& app, Options& options) {
  auto* command =
      app.add_subcommand("new-job", "Make a job of a stock, a machining program and a tool table");
  const auto settings = std::make_shared<NewJobArguments>();
  AddSettings(*command, *settings);
  command->callback([settings, &options] {
    options.run = [settings, &options] { return NewJob(*settings, options); };
  });
}

}  // namespace host

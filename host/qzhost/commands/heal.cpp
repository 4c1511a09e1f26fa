#include <memory>
#include <string>

#include "host/qzhost/CommandError.h"
#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/SurfaceOperation.h"
#include "host/qzhost/commands/arguments.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

using HealExport = void(double tolerance, char* input, char* output, bool* succeeded);

struct HealSettings {
  std::string input;
  std::string output;
  double tolerance = 0.0;
  bool check = false;
};

SurfaceOperation OperationOf(const HealSettings& settings) {
  SurfaceOperation operation;
  operation.caption = "Healing";
  operation.input = settings.input;
  operation.output = settings.output;
  operation.writeNothing = settings.check;
  // Bodies that touch have vertices of their own there, at the same places.
  operation.countResultByNumber = true;
  operation.call = [&settings](const AddIn& addIn, char* input, char* output, bool* succeeded) {
    addIn.Export<HealExport>("qztutl_heal")(settings.tolerance, input, output, succeeded);
  };
  return operation;
}

void AddWhatIsLeft(Report& report, const SurfaceResult& result) {
  if (!result.after) return;
  const std::string left = FaultsText(*result.after);
  report.Add("sound", result.after->IsSound());
  report.Add("changed", result.changed);
  report.AddLine(left.empty() ? "the result is closed, edge-manifold and consistently oriented"
                              : "left: " + left);
  if (!result.changed) report.AddLine("the mesh is as it was");
}

// A check is about the input: a result that could be made is no success of it.
void JudgeCheck(const HealSettings& settings, SurfaceResult& result) {
  if (!settings.check || !result.changed) return;
  result.verdict = {kFailed, settings.input + ": healing would change it"};
}

int Heal(const HealSettings& settings, const Options& options) {
  if (settings.output.empty() && !settings.check) {
    throw CommandError("OUT is required, unless with --check (try --help)");
  }
  const SurfaceOperation operation = OperationOf(settings);
  SurfaceResult result = RunSurfaceOperation(operation, options);
  JudgeCheck(settings, result);
  Report report(options);
  report.Add("command", "heal");
  report.Add("tolerance", settings.tolerance);
  report.Add("check", settings.check);
  AddSurfaceResult(report, operation, result, options);
  AddWhatIsLeft(report, result);
  return Conclude(report, result.verdict);
}

}  // namespace

void AddHealCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand("heal", "Close gaps and mend facets of a surface");
  const auto settings = std::make_shared<HealSettings>();
  AddMeshInput(*command, settings->input);
  command->add_option("OUT", settings->output,
                      "The mesh to write, of these extensions; not needed with --check");
  command
      ->add_option("--tolerance", settings->tolerance,
                   "How far apart what belongs together may lie, in length units")
      ->check(NumberFromZero())
      ->required();
  command->add_flag("--check", settings->check,
                    "Write nothing; exit code 1 when healing would change the mesh");
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Heal(*settings, options); };
  });
}

}  // namespace host

#include <memory>
#include <string>

#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/OutlineOperation.h"
#include "host/qzhost/commands/arguments.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

using SilhouetteExport = void(char* input, char* output, double distance, double* boxMin,
                              double* boxMax, unsigned char* result);

struct SilhouetteSettings {
  std::string input;
  std::string output;
  double distance = 0.0;
};

OutlineOperation OperationOf(const SilhouetteSettings& settings) {
  OutlineOperation operation;
  operation.caption = "Tracing the silhouette";
  operation.input = settings.input;
  operation.output = settings.output;
  operation.call = [&settings](const AddIn& addIn, char* input, char* output, formats::Box& box,
                               bool* succeeded) {
    unsigned char result = 0;
    addIn.Export<SilhouetteExport>("qztutl_silbndy")(input, output, settings.distance,
                                                     box.lower.data(), box.upper.data(), &result);
    *succeeded = result != 0;
  };
  return operation;
}

int Silhouette(const SilhouetteSettings& settings, const Options& options) {
  const OutlineOperation operation = OperationOf(settings);
  const OutlineResult result = RunOutlineOperation(operation, options);
  Report report(options);
  report.Add("command", "silhouette");
  report.Add("distance", settings.distance);
  AddOutlineResult(report, operation, result, options);
  return Conclude(report, result.verdict);
}

}  // namespace

void AddSilhouetteCommand(CLI::App& app, Options& options) {
  auto* command =
      app.add_subcommand("silhouette", "Trace the outline of a surface's shadow along z");
  const auto settings = std::make_shared<SilhouetteSettings>();
  AddMeshInput(*command, settings->input);
  AddCurvesOutput(*command, settings->output);
  command
      ->add_option("--distance", settings->distance,
                   "How far points that are left out may move the outline, in length units; 0: not "
                   "at all")
      ->check(NumberFromZero())
      ->required();
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Silhouette(*settings, options); };
  });
}

}  // namespace host

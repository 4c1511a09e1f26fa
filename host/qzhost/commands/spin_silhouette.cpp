#include <memory>
#include <string>

#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/OutlineOperation.h"
#include "host/qzhost/commands/arguments.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

using SpinSilhouetteExport = void(const char* input, int mode, const char* output, double distance,
                                  double* boxMin, double* boxMax, unsigned char* result);

struct SpinSilhouetteSettings {
  std::string input;
  std::string output;
  double distance = 0.0;
  int mode = 0;
};

OutlineOperation OperationOf(const SpinSilhouetteSettings& settings) {
  OutlineOperation operation;
  operation.caption = "Tracing the spun outline";
  operation.input = settings.input;
  operation.output = settings.output;
  operation.call = [&settings](const AddIn& addIn, char* input, char* output, formats::Box& box,
                               bool* succeeded) {
    unsigned char result = 0;
    addIn.Export<SpinSilhouetteExport>("qztutlSpinSilBndy")(input, settings.mode, output,
                                                            settings.distance, box.lower.data(),
                                                            box.upper.data(), &result);
    *succeeded = result != 0;
  };
  return operation;
}

int SpinSilhouette(const SpinSilhouetteSettings& settings, const Options& options) {
  const OutlineOperation operation = OperationOf(settings);
  const OutlineResult result = RunOutlineOperation(operation, options);
  Report report(options);
  report.Add("command", "spin-silhouette");
  report.Add("distance", settings.distance);
  report.Add("mode", settings.mode);
  AddOutlineResult(report, operation, result, options);
  return Conclude(report, result.verdict);
}

}  // namespace

void AddSpinSilhouetteCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand(
      "spin-silhouette", "Trace the outline in x and radius of a surface spun about the x axis");
  const auto settings = std::make_shared<SpinSilhouetteSettings>();
  AddMeshInput(*command, settings->input);
  AddCurvesOutput(*command, settings->output);
  command
      ->add_option(
          "--distance", settings->distance,
          "How closely lines follow curved pieces, in length units; 0: a ten-thousandth of "
          "the diagonal")
      ->check(NumberFromZero())
      ->required();
  command
      ->add_option("--mode", settings->mode,
                   "Variant of the curves file: 0 plain, 1 with tree fields (0)")
      ->check(CLI::IsMember({"0", "1"}));
  command->callback([settings, &options] {
    options.run = [settings, &options] { return SpinSilhouette(*settings, options); };
  });
}

}  // namespace host

#include <memory>
#include <string>

#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/SurfaceOperation.h"
#include "host/qzhost/commands/arguments.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

using OffsetExport = void(const char* input, const char* output, double distance, double angle,
                          double* boxMin, double* boxMax, unsigned char* result);

constexpr double kLargestAngle = 90.0;

struct OffsetSettings {
  std::string input;
  std::string output;
  double distance = 0.0;
  double angleDegrees = 0.0;
};

// The box is changed while the add-in runs.
SurfaceOperation OperationOf(const OffsetSettings& settings, formats::Box& box) {
  SurfaceOperation operation;
  operation.caption = "Offsetting";
  operation.input = settings.input;
  operation.output = settings.output;
  operation.movesItsInput = true;
  operation.countResultByNumber = true;
  operation.prepare = [&box](const formats::Mesh& input) { box = BoxOf(input); };
  operation.call = [&settings, &box](const AddIn& addIn, char* input, char* output,
                                     bool* succeeded) {
    unsigned char result = 0;
    addIn.Export<OffsetExport>("qztutlSphericalOffsetTris")(input, output, settings.distance,
                                                            settings.angleDegrees, box.lower.data(),
                                                            box.upper.data(), &result);
    *succeeded = result != 0;
  };
  return operation;
}

int Offset(const OffsetSettings& settings, const Options& options) {
  formats::Box box{};
  const SurfaceOperation operation = OperationOf(settings, box);
  const SurfaceResult result = RunSurfaceOperation(operation, options);
  Report report(options);
  report.Add("command", "offset");
  report.Add("distance", settings.distance);
  report.Add("angle", settings.angleDegrees);
  AddSurfaceResult(report, operation, result, options);
  return Conclude(report, result.verdict);
}

}  // namespace

void AddOffsetCommand(CLI::App& app, Options& options) {
  auto* command =
      app.add_subcommand("offset", "Grow a surface by a distance all around, or shrink a solid");
  const auto settings = std::make_shared<OffsetSettings>();
  AddMeshInput(*command, settings->input);
  AddMeshOutput(*command, settings->output);
  command
      ->add_option("--distance", settings->distance,
                   "How far, in length units: outwards above 0, inwards below")
      ->check(NumberCheck("a number other than 0", [](double number) { return number != 0.0; }))
      ->required();
  command
      ->add_option("--angle", settings->angleDegrees,
                   "The largest turn between neighbouring facets of a rounded piece, in degrees up "
                   "to 90; 0: 10")
      ->check(NumberCheck("an angle from 0 to 90 degrees",
                          [](double number) { return number >= 0.0 && number <= kLargestAngle; }))
      ->required();
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Offset(*settings, options); };
  });
}

}  // namespace host

#include <memory>
#include <string>

#include "formats/curves/CurvesFile.h"
#include "host/files/ConvertCurves.h"
#include "host/files/ConvertMesh.h"
#include "host/files/FileKind.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/CurvesTarget.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

struct ConvertSettings {
  std::string input;
  std::string output;
  std::optional<int> colour;
  bool binary = false;
  bool ascii = false;
};

Conversion ConversionOf(const ConvertSettings& settings) {
  Conversion conversion{settings.input, settings.output, {}, 0};
  conversion.colour = static_cast<std::uint8_t>(settings.colour.value_or(0));
  if (settings.binary) conversion.encoding = formats::MeshEncoding::Binary;
  if (settings.ascii) conversion.encoding = formats::MeshEncoding::Ascii;
  return conversion;
}

Report ReportOn(const ConvertSettings& settings, const std::string& inputFormat,
                const std::string& outputFormat, const std::string& outputText,
                const Options& options) {
  Report report(options);
  report.Add("command", "convert");
  report.Add("exit_code", static_cast<int>(kSuccess));
  report.Add("input", settings.input);
  report.Add("input_format", inputFormat, "from", settings.input + " (" + inputFormat + ")");
  report.Add("output", settings.output);
  report.Add("output_format", outputFormat, "to", settings.output + " (" + outputText + ")");
  return report;
}

int ConvertAMesh(const ConvertSettings& settings, const Options& options) {
  const ConversionResult result = ConvertMesh(ConversionOf(settings));
  const std::string encoding = result.encoding == formats::MeshEncoding::Ascii ? "ASCII" : "binary";
  const std::string format = formats::NameOf(result.outputFormat);
  Report report = ReportOn(settings, formats::NameOf(result.inputFormat), format,
                           format + ", " + encoding, options);
  report.Add("encoding", encoding);
  report.Add("facets", result.facets, "facets");
  report.Add("vertices", result.vertices, "vertices");
  report.Add("colours_lost", result.coloursLost);
  report.Add("rounded_to_single_precision", result.roundedToSingle);
  report.Add("files_written", nlohmann::ordered_json::array({settings.output}));
  if (result.coloursLost) report.AddLine("the format has no colours: they are lost");
  if (result.roundedToSingle) report.AddLine("coordinates are rounded to single precision");
  report.Print();
  return kSuccess;
}

int ConvertToDrawing(const ConvertSettings& settings, const Options& options) {
  if (settings.binary || settings.ascii || settings.colour) {
    throw CommandError("--binary, --ascii and --colour are for meshes");
  }
  const CurvesConversion result =
      ConvertCurves(settings.input, settings.output, DrawingUnitFor(options.units));
  const std::string format = formats::NameOf(result.format);
  Report report = ReportOn(settings, formats::NameOf(result.variant), format, format, options);
  report.Add("curves", result.curves, "curves");
  report.Add("points", result.points, "points");
  report.Add("heights_lost", result.heightsLost);
  report.Add("files_written", nlohmann::ordered_json::array({settings.output}));
  if (result.heightsLost) report.AddLine("the drawing is flat: the points' z is lost");
  report.Print();
  return kSuccess;
}

int Convert(const ConvertSettings& settings, const Options& options) {
  return KindOf(settings.input) == FileKind::kCurves ? ConvertToDrawing(settings, options)
                                                     : ConvertAMesh(settings, options);
}

}  // namespace

void AddConvertCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand(
      "convert", "Convert a mesh, or curves to a drawing; the output's extension says the format");
  const auto settings = std::make_shared<ConvertSettings>();
  command
      ->add_option("IN", settings->input,
                   "The mesh: .iff, .tmp, .stl, .ply, .obj, .off; or a file of curves")
      ->required();
  command
      ->add_option("OUT", settings->output,
                   "The mesh to write, of these extensions; of curves .svg or .dxf")
      ->required();
  auto* binary = command->add_flag("--binary", settings->binary, "Binary STL or PLY (usual)");
  command->add_flag("--ascii", settings->ascii, "ASCII STL or PLY")->excludes(binary);
  command
      ->add_option("--colour,--color", settings->colour,
                   "Colour number of facets that have no colour in the input (0)")
      ->check(CLI::Range(0, 255));
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Convert(*settings, options); };
  });
}

}  // namespace host

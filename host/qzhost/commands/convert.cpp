#include <memory>
#include <string>

#include "host/files/ConvertMesh.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

struct Settings {
  Conversion conversion;
  int colour = 0;
  bool binary = false;
  bool ascii = false;
};

Conversion ConversionOf(const Settings& settings) {
  Conversion conversion = settings.conversion;
  conversion.colour = static_cast<std::uint8_t>(settings.colour);
  if (settings.binary) conversion.encoding = formats::MeshEncoding::Binary;
  if (settings.ascii) conversion.encoding = formats::MeshEncoding::Ascii;
  return conversion;
}

int Convert(const Settings& settings, const Options& options) {
  const ConversionResult result = ConvertMesh(ConversionOf(settings));
  const char* encoding = result.encoding == formats::MeshEncoding::Ascii ? "ASCII" : "binary";
  Report report(options);
  report.Add("command", "convert");
  report.Add("exit_code", static_cast<int>(kSuccess));
  report.Add("input", settings.conversion.input);
  report.Add("input_format", formats::NameOf(result.inputFormat), "from",
             settings.conversion.input + " (" + formats::NameOf(result.inputFormat) + ")");
  report.Add("output", settings.conversion.output);
  report.Add("output_format", formats::NameOf(result.outputFormat), "to",
             settings.conversion.output + " (" + formats::NameOf(result.outputFormat) + ", " +
                 encoding + ")");
  report.Add("encoding", encoding);
  report.Add("facets", result.facets, "facets");
  report.Add("vertices", result.vertices, "vertices");
  report.Add("colours_lost", result.coloursLost);
  report.Add("rounded_to_single_precision", result.roundedToSingle);
  report.Add("files_written", nlohmann::ordered_json::array({settings.conversion.output}));
  if (result.coloursLost) report.AddLine("the format has no colours: they are lost");
  if (result.roundedToSingle) report.AddLine("coordinates are rounded to single precision");
  report.Print();
  return kSuccess;
}

}  // namespace

void AddConvertCommand(CLI::App& app, Options& options) {
  auto* command =
      app.add_subcommand("convert", "Convert a mesh; the output's extension says the format");
  const auto settings = std::make_shared<Settings>();
  command
      ->add_option("IN", settings->conversion.input, "The mesh: .iff, .tmp, .stl, .ply, .obj, .off")
      ->required();
  command->add_option("OUT", settings->conversion.output, "The mesh to write, of these extensions")
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

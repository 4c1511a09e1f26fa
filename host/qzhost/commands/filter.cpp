#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "host/qzhost/SurfaceOperation.h"
#include "host/qzhost/commands/arguments.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

using FilterExport = void(char* input, char* output, unsigned short colourCount,
                          unsigned char* colours, bool* succeeded);

struct FilterSettings {
  std::string input;
  std::string output;
  std::vector<int> colours;
};

// In rising order, each once: the add-in keeps a facet once for every time its colour is named.
std::vector<unsigned char> ColoursOf(const FilterSettings& settings) {
  std::vector<unsigned char> colours;
  for (const int colour : settings.colours) colours.push_back(static_cast<unsigned char>(colour));
  std::sort(colours.begin(), colours.end());
  colours.erase(std::unique(colours.begin(), colours.end()), colours.end());
  return colours;
}

bool Contains(const std::vector<unsigned char>& colours, std::uint8_t colour) {
  return std::binary_search(colours.begin(), colours.end(), colour);
}

// The add-in does not notice when it runs out of memory for a facet.
std::string MissingFacets(const std::vector<unsigned char>& colours, const formats::Mesh& input,
                          const formats::Mesh& result) {
  const auto wanted =
      std::count_if(input.facets.begin(), input.facets.end(),
                    [&](const formats::Facet& facet) { return Contains(colours, facet.colour); });
  if (result.facets.size() == static_cast<std::size_t>(wanted)) return "";
  return "has kept " + std::to_string(result.facets.size()) + " of " + std::to_string(wanted) +
         " facets";
}

SurfaceOperation OperationOf(const FilterSettings& settings, std::vector<unsigned char>& colours) {
  SurfaceOperation operation;
  operation.caption = "Filtering";
  operation.input = settings.input;
  operation.output = settings.output;
  operation.call = [&colours](const AddIn& addIn, char* input, char* output, bool* succeeded) {
    const auto count = static_cast<unsigned short>(colours.size());
    addIn.Export<FilterExport>("qztutlFilterStockByColor")(input, output, count, colours.data(),
                                                           succeeded);
  };
  operation.doubt = [&colours](const formats::Mesh& input, const formats::Mesh& result) {
    return MissingFacets(colours, input, result);
  };
  return operation;
}

void AddColours(Report& report, const std::vector<unsigned char>& colours,
                const SurfaceResult& result, const Options& options) {
  auto list = nlohmann::ordered_json::array();
  for (const unsigned char colour : colours) {
    const auto found = result.coloursBefore.find(colour);
    const bool used = found != result.coloursBefore.end();
    const formats::ColourMeasures of = used ? found->second : formats::ColourMeasures();
    list.push_back({{"colour", colour}, {"facets", of.facets}, {"area", of.area}});
    report.AddLine("colour " + std::to_string(colour) + ": " +
                   (used ? std::to_string(of.facets) + " facets, area " + Fixed(of.area, 3) + " " +
                               UnitsName(options.units) + "^2"
                         : "no facet has it"));
  }
  report.Add("colours", std::move(list));
}

int Filter(const FilterSettings& settings, const Options& options) {
  std::vector<unsigned char> colours = ColoursOf(settings);
  const SurfaceOperation operation = OperationOf(settings, colours);
  const SurfaceResult result = RunSurfaceOperation(operation, options);
  Report report(options);
  report.Add("command", "filter");
  AddSurfaceResult(report, operation, result, options);
  AddColours(report, colours, result, options);
  return Conclude(report, result.verdict);
}

}  // namespace

void AddFilterCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand("filter", "Keep only the facets of the colours given");
  const auto settings = std::make_shared<FilterSettings>();
  AddMeshInput(*command, settings->input);
  AddMeshOutput(*command, settings->output);
  command
      ->add_option("--colour,--color", settings->colours,
                   "Colour numbers of the facets to keep, 0 to 255")
      ->check(CLI::Range(0, 255))
      ->delimiter(',')
      ->required();
  command->callback([settings, &options] {
    options.run = [settings, &options] { return Filter(*settings, options); };
  });
}

}  // namespace host

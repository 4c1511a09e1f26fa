#include "host/qzhost/MeshSummary.h"

#include "formats/MeshMeasures.h"

namespace host {

MeshSummary Summarise(const formats::Mesh& mesh) {
  return {mesh.facets.size(), mesh.vertices.size(), formats::MeasureMesh(mesh).volume};
}

void AddSummary(Report& report, const std::string& suffix, const MeshSummary& summary,
                const Options& options) {
  report.Add("facets_" + suffix, summary.facets, "facets " + suffix);
  report.Add("vertices_" + suffix, summary.vertices, "vertices " + suffix);
  AddVolume(report, suffix, summary.volume, options);
}

void AddVolume(Report& report, const std::string& suffix, double volume, const Options& options) {
  report.Add("volume_" + suffix, volume, "volume " + suffix,
             Fixed(volume, 3) + " " + UnitsName(options.units) + "^3");
}

}  // namespace host

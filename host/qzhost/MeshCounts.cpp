#include "host/qzhost/MeshCounts.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace host {

namespace {

struct Count {
  const char* key;
  const char* label;
  std::size_t value;
};

std::vector<Count> Faults(const MeshCounts& counts) {
  const formats::MeshTopology& topology = counts.topology;
  return {{"open_edges", "open edges", topology.openEdges},
          {"non_manifold_edges", "non-manifold edges", topology.nonManifoldEdges},
          {"flipped_facets", "flipped facets", topology.flippedFacets},
          {"zero_area_facets", "zero-area facets", counts.zeroAreaFacets},
          {"holes", "holes", topology.holes}};
}

std::vector<Count> AllCounts(const MeshCounts& counts) {
  std::vector<Count> all = {{"facets", "facets", counts.facets},
                            {"vertices", "vertices", counts.vertices},
                            {"components", "components", counts.topology.components}};
  for (const Count& fault : Faults(counts)) all.push_back(fault);
  return all;
}

std::string VolumeText(const std::optional<double>& volume, const Options& options) {
  if (!volume) return "none";
  return Fixed(*volume, 3) + " " + UnitsName(options.units) + "^3";
}

nlohmann::ordered_json VolumeValue(const std::optional<double>& volume) {
  return volume ? nlohmann::ordered_json(*volume) : nlohmann::ordered_json(nullptr);
}

std::string FromTo(const std::string& before, const std::string& after) {
  return after.empty() ? before : before + " -> " + after;
}

void AddAreas(Report& report, const MeshCounts& before, const std::optional<MeshCounts>& after,
              const Options& options) {
  const std::string unit = std::string(" ") + UnitsName(options.units) + "^2";
  report.Add("area_in", before.area, "area",
             FromTo(Fixed(before.area, 3) + unit, after ? Fixed(after->area, 3) + unit : ""));
  if (after) report.Add("area_out", after->area);
}

void AddVolumes(Report& report, const MeshCounts& before, const std::optional<MeshCounts>& after,
                const Options& options) {
  const std::string textAfter = after ? VolumeText(after->volume, options) : "";
  report.Add("volume_in", VolumeValue(before.volume), "volume",
             FromTo(VolumeText(before.volume, options), textAfter));
  if (after) report.Add("volume_out", VolumeValue(after->volume));
}

}  // namespace

Counting CountingFor(const formats::Mesh& mesh) {
  return formats::AnalyseTopology(mesh).IsOrientedManifold() ? Counting::kByNumber
                                                             : Counting::kByPlace;
}

MeshCounts CountMesh(const formats::Mesh& mesh, Counting counting) {
  const formats::MeshMeasures measures = formats::MeasureMesh(mesh);
  MeshCounts counts{
      mesh.facets.size(), mesh.vertices.size(), measures.zeroAreaFacets, {}, measures.area, {}};
  if (counting == Counting::kByPlace) {
    formats::Mesh joined = mesh;
    formats::JoinCoincidentVertices(joined);
    counts.topology = formats::AnalyseTopology(joined);
  } else {
    counts.topology = formats::AnalyseTopology(mesh);
  }
  if (counts.topology.IsOrientedManifold()) counts.volume = measures.volume;
  return counts;
}

void AddCounts(Report& report, const MeshCounts& before, const std::optional<MeshCounts>& after,
               const Options& options) {
  const std::vector<Count> first = AllCounts(before);
  const std::vector<Count> second = after ? AllCounts(*after) : std::vector<Count>();
  for (std::size_t i = 0; i < first.size(); ++i) {
    const std::string key = first[i].key;
    const std::string textAfter = after ? std::to_string(second[i].value) : "";
    report.Add(key + "_in", first[i].value, first[i].label,
               FromTo(std::to_string(first[i].value), textAfter));
    if (after) report.Add(key + "_out", second[i].value);
  }
  if (after) {
    const std::size_t filled =
        before.topology.holes - std::min(before.topology.holes, after->topology.holes);
    report.Add("holes_filled", filled, "holes filled");
  }
  AddAreas(report, before, after, options);
  AddVolumes(report, before, after, options);
}

std::string FaultsText(const MeshCounts& counts) {
  std::string text;
  for (const Count& fault : Faults(counts)) {
    if (fault.value == 0) continue;
    text += (text.empty() ? "" : ", ") + std::to_string(fault.value) + " " + fault.label;
  }
  return text;
}

}  // namespace host

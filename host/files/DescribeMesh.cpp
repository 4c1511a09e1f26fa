#include "formats/MeshMeasures.h"
#include "host/files/DescribeFile.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

Json DescribeTopology(const formats::MeshTopology& topology) {
  Json description = {{"closed", topology.IsClosed()},
                      {"oriented_manifold", topology.IsOrientedManifold()},
                      {"components", topology.components},
                      {"genus", nullptr},
                      {"euler_number", topology.eulerNumber},
                      {"edges", topology.edges},
                      {"open_edges", topology.openEdges},
                      {"holes", topology.holes},
                      {"flipped_edges", topology.flippedEdges},
                      {"flipped_facets", topology.flippedFacets},
                      {"non_manifold_edges", topology.nonManifoldEdges},
                      {"pinched_vertices", topology.pinchedVertices},
                      {"unused_vertices", topology.unusedVertices},
                      {"repeated_vertex_facets", topology.repeatedVertexFacets}};
  if (const auto genus = topology.Genus()) description["genus"] = *genus;
  return description;
}

Json DescribeColours(const formats::MeshMeasures& measures) {
  Json colours = Json::array();
  for (const auto& [colour, of] : measures.colours) {
    colours.push_back({{"colour", colour}, {"facets", of.facets}, {"area", of.area}});
  }
  return colours;
}

}  // namespace

Json DescribeMesh(const formats::Mesh& mesh) {
  const formats::MeshMeasures measures = formats::MeasureMesh(mesh);
  Json description = {{"vertices", mesh.vertices.size()},
                      {"facets", mesh.facets.size()},
                      {"box", nullptr},
                      {"volume", measures.volume},
                      {"area", measures.area},
                      {"zero_area_facets", measures.zeroAreaFacets},
                      {"non_finite_vertices", measures.nonFiniteVertices}};
  if (measures.box) {
    description["box"] = {{"lower", measures.box->lower}, {"upper", measures.box->upper}};
  }
  description["topology"] = DescribeTopology(formats::AnalyseTopology(mesh));
  formats::Mesh joined = mesh;
  const size_t coincident = formats::JoinCoincidentVertices(joined);
  description["coincident_vertices"] = coincident;
  // What the facets would bound if places counted and not vertex numbers.
  if (coincident > 0) {
    description["topology_when_joined"] = DescribeTopology(formats::AnalyseTopology(joined));
  }
  description["colours"] = DescribeColours(measures);
  return description;
}

}  // namespace host

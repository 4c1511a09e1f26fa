#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "formats/MeshMeasures.h"
#include "host/qzhost/Report.h"

namespace host {

/// Whether vertices at one place are one vertex.
enum class Counting { kByNumber, kByPlace };

/// The figures of a mesh that filter and heal show before and after.
struct MeshCounts {
  std::size_t facets = 0;
  std::size_t vertices = 0;
  std::size_t zeroAreaFacets = 0;
  formats::MeshTopology topology;
  double area = 0;               // in squared length units
  std::optional<double> volume;  // in cubed length units; of a surface that bounds a solid only

  /// Bounds solids, and without facets of no area.
  bool IsSound() const { return topology.IsOrientedManifold() && zeroAreaFacets == 0; }
};

/// By number where the facets then bound a solid: its bodies may touch. Else by place, so that a
/// file that gives every facet vertices of its own is no heap of loose facets.
Counting CountingFor(const formats::Mesh& mesh);

MeshCounts CountMesh(const formats::Mesh& mesh, Counting counting);

/// Adds every count with "_in" and, when there is a result, "_out" behind its key, and
/// "holes_filled"; in the text one line "before -> after" a count.
void AddCounts(Report& report, const MeshCounts& before, const std::optional<MeshCounts>& after,
               const Options& options);

/// "3 open edges, 1 flipped facets", what keeps the mesh from being sound; empty when nothing does.
std::string FaultsText(const MeshCounts& counts);

}  // namespace host

#pragma once

#include <cstddef>
#include <string>

#include "formats/Mesh.h"
#include "host/qzhost/Report.h"

namespace host {

/// The figures of a mesh that reports show. Volume in cubed length units, positive when the facets
/// face outwards; it has a meaning only for a closed mesh.
struct MeshSummary {
  std::size_t facets = 0;
  std::size_t vertices = 0;
  double volume = 0.0;
};

MeshSummary Summarise(const formats::Mesh& mesh);

/// Adds facets_SUFFIX, vertices_SUFFIX and volume_SUFFIX.
void AddSummary(Report& report, const std::string& suffix, const MeshSummary& summary,
                const Options& options);

/// Adds volume_SUFFIX; `volume` in cubed length units.
void AddVolume(Report& report, const std::string& suffix, double volume, const Options& options);

}  // namespace host

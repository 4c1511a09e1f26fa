#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "formats/CompareBandsFile.h"
#include "formats/Mesh.h"
#include "host/measure/FacetTree.h"

namespace host {

/// One band: deviations above `from` up to `to`.
struct BandArea {
  std::optional<double> from;  // none below the first limit
  std::optional<double> to;    // none for what lies above the last limit
  std::uint8_t colour = 0;     // in the result, where colour 256 is byte 0
  std::size_t facets = 0;
  double area = 0;
};

/// The bands in ascending order with the facets of the result that belong to each. The colour says
/// which band a facet is in; where several bands have one colour, the deviation of the facet's
/// centre from the stock decides among them.
std::vector<BandArea> MeasureBands(const formats::Mesh& result, const formats::CompareBands& bands,
                                   const FacetTree& stock);

}  // namespace host

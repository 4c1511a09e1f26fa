#include "host/qzhost/BandAreas.h"

#include <algorithm>
#include <numeric>

#include "host/measure/MeshTriangle.h"

namespace host {

namespace {

// In ascending order of the limits, the colour beyond them last.
std::vector<BandArea> BandsOf(const formats::CompareBands& bands) {
  std::vector<std::size_t> order(bands.distances.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return bands.distances[a] < bands.distances[b];
  });
  std::vector<BandArea> areas;
  std::optional<double> from;
  for (const std::size_t i : order) {
    areas.push_back(
        {from, bands.distances[i], static_cast<std::uint8_t>(bands.colours[i]), 0, 0.0});
    from = bands.distances[i];
  }
  areas.push_back({from, std::nullopt, static_cast<std::uint8_t>(bands.stockColour), 0, 0.0});
  return areas;
}

double DistanceFromBand(const BandArea& band, double deviation) {
  const double below = band.from ? *band.from - deviation : 0.0;
  const double above = band.to ? deviation - *band.to : 0.0;
  return std::max({below, above, 0.0});
}

class Bands {
 public:
  Bands(const formats::CompareBands& bands, const FacetTree& stock)
      : m_areas(BandsOf(bands)), m_stock(stock), m_withColour(256) {
    for (BandArea& band : m_areas) m_withColour[band.colour].push_back(&band);
  }

  void Add(const Triangle& triangle, std::uint8_t colour) {
    BandArea* const band = BandFor(triangle, colour);
    if (band == nullptr) return;
    ++band->facets;
    band->area += Area(triangle);
  }

  std::vector<BandArea> Areas() const { return m_areas; }

 private:
  BandArea* BandFor(const Triangle& triangle, std::uint8_t colour) const {
    const auto& candidates = m_withColour[colour];
    if (candidates.empty()) return nullptr;
    if (candidates.size() == 1) return candidates.front();
    const Point centre = Centroid(triangle);
    const double deviation = m_stock.SignedDistance(centre, m_stock.NearestTo(centre));
    return *std::min_element(
        candidates.begin(), candidates.end(), [deviation](const BandArea* a, const BandArea* b) {
          return DistanceFromBand(*a, deviation) < DistanceFromBand(*b, deviation);
        });
  }

  std::vector<BandArea> m_areas;
  const FacetTree& m_stock;
  std::vector<std::vector<BandArea*>> m_withColour;
};

}  // namespace

std::vector<BandArea> MeasureBands(const formats::Mesh& result, const formats::CompareBands& bands,
                                   const FacetTree& stock) {
  Bands sorted(bands, stock);
  for (const formats::Facet& facet : result.facets) {
    sorted.Add(TriangleOf(result, facet), facet.colour);
  }
  return sorted.Areas();
}

}  // namespace host

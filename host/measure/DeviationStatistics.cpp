#include "host/measure/DeviationStatistics.h"

#include <algorithm>
#include <cmath>

#include "host/measure/MeshTriangle.h"

namespace host {

namespace {

constexpr double kLeastSamples = 100'000;
constexpr FarthestPoint::Effort kForTheWorst = {1e-3, 30'000};
// The places after the first only show where to look.
constexpr FarthestPoint::Effort kForOthers = {1e-2, 5'000};
constexpr std::size_t kWorstPlaces = 5;
constexpr double kApart = 0.05;  // of the diagonal

struct Sample {
  double deviation;
  double area;
};

double AreaOf(const formats::Mesh& mesh) {
  double area = 0;
  for (const formats::Facet& facet : mesh.facets) area += Area(TriangleOf(mesh, facet));
  return area;
}

// Calls `take` with the centres of the n x n equal parts of a triangle.
template <typename Take>
void ForEachPart(const Triangle& t, int n, Take take) {
  const Point u = (1.0 / n) * (t[1] - t[0]);
  const Point v = (1.0 / n) * (t[2] - t[0]);
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n - i; ++j) {
      take(t[0] + (i + 1.0 / 3) * u + (j + 1.0 / 3) * v);
      if (j < n - i - 1) take(t[0] + (i + 2.0 / 3) * u + (j + 2.0 / 3) * v);
    }
  }
}

class Sampler {
 public:
  Sampler(const formats::Mesh& surface, const FacetTree& stock,
          const std::function<bool()>& stopAsked)
      : m_surface(surface), m_stock(stock), m_stopAsked(stopAsked), m_area(AreaOf(surface)) {}

  // False when the user has stopped it.
  bool Take() {
    for (const formats::Facet& facet : m_surface.facets) {
      const Triangle triangle = TriangleOf(m_surface, facet);
      const double area = Area(triangle);
      if (!(area > 0)) continue;
      const int n = static_cast<int>(std::ceil(std::sqrt(area / m_area * kLeastSamples)));
      ForEachPart(triangle, n, [&](const Point& p) {
        m_samples.push_back({m_stock.SignedDistance(p, m_stock.NearestTo(p)), area / (n * n)});
      });
      if (m_samples.size() >= m_nextQuestion) {
        m_nextQuestion = m_samples.size() + 1024;
        if (m_stopAsked()) return false;
      }
    }
    std::sort(m_samples.begin(), m_samples.end(), [](const Sample& a, const Sample& b) {
      return a.deviation != b.deviation ? a.deviation < b.deviation : a.area < b.area;
    });
    return true;
  }

  void Summarise(DeviationStatistics& statistics) const {
    statistics.area = m_area;
    statistics.samples = m_samples.size();
    if (m_samples.empty()) return;
    statistics.minimum = m_samples.front().deviation;
    statistics.maximum = m_samples.back().deviation;
    double area = 0;
    double squares = 0;
    for (const Sample& sample : m_samples) {
      area += sample.area;
      statistics.mean += sample.area * sample.deviation;
      statistics.meanOfSize += sample.area * std::abs(sample.deviation);
      squares += sample.area * sample.deviation * sample.deviation;
    }
    statistics.mean /= area;
    statistics.meanOfSize /= area;
    statistics.rootMeanSquare = std::sqrt(squares / area);
    TakePercentiles(area, statistics);
  }

 private:
  void TakePercentiles(double area, DeviationStatistics& statistics) const {
    double below = 0;
    std::size_t sample = 0;
    for (std::size_t i = 0; i < statistics.percentiles.size(); ++i) {
      const double wanted = DeviationStatistics::kPercentages[i] / 100 * area;
      while (sample + 1 < m_samples.size() && below + m_samples[sample].area < wanted) {
        below += m_samples[sample++].area;
      }
      statistics.percentiles[i] = m_samples[sample].deviation;
    }
  }

  const formats::Mesh& m_surface;
  const FacetTree& m_stock;
  const std::function<bool()>& m_stopAsked;
  double m_area;
  std::vector<Sample> m_samples;
  std::size_t m_nextQuestion = 1024;
};

std::vector<DeviationPlace> WorstPlaces(const FarthestPoint& search, Side side, double apart,
                                        const std::function<bool()>& stopAsked) {
  std::vector<DeviationPlace> places;
  std::vector<Ball> taken;
  while (places.size() < kWorstPlaces && !stopAsked()) {
    const FarthestPoint::Found found =
        search.Search(side, taken, places.empty() ? kForTheWorst : kForOthers);
    if (!(found.distance > 0)) break;
    places.push_back(
        {side == Side::kInside ? found.distance : -found.distance, found.place, found.bound});
    taken.push_back({found.place, apart});
  }
  return places;
}

}  // namespace

DeviationStatistics MeasureDeviations(const formats::Mesh& surface, const FacetTree& stock,
                                      const std::function<bool()>& stopAsked) {
  DeviationStatistics statistics;
  Sampler sampler(surface, stock, stopAsked);
  statistics.stopped = !sampler.Take();
  if (statistics.stopped) return statistics;
  sampler.Summarise(statistics);
  const FarthestPoint search(surface, stock, stopAsked);
  const double apart = kApart * stock.Diagonal();
  statistics.gouges = WorstPlaces(search, Side::kOutside, apart, stopAsked);
  statistics.excesses = WorstPlaces(search, Side::kInside, apart, stopAsked);
  statistics.stopped = stopAsked();
  if (!statistics.gouges.empty()) {
    statistics.minimum = std::min(statistics.minimum, statistics.gouges.front().deviation);
  }
  if (!statistics.excesses.empty()) {
    statistics.maximum = std::max(statistics.maximum, statistics.excesses.front().deviation);
  }
  return statistics;
}

}  // namespace host

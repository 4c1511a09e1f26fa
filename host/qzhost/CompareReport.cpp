#include "host/qzhost/CompareReport.h"

#include <cmath>

namespace host {

namespace {

using Json = nlohmann::ordered_json;

std::string PlaceText(const Point& place) {
  return "(" + Fixed(place[0], 4) + ", " + Fixed(place[1], 4) + ", " + Fixed(place[2], 4) + ")";
}

Json OptionalNumber(const std::optional<double>& number) {
  return number ? Json(*number) : Json(nullptr);
}

std::string RangeText(const BandArea& band) {
  if (!band.from && !band.to) return "all";
  if (!band.from) return "up to " + Fixed(*band.to, 4);
  if (!band.to) return "above " + Fixed(*band.from, 4);
  return Fixed(*band.from, 4) + " to " + Fixed(*band.to, 4);
}

double Share(double area, double whole) { return whole > 0 ? area / whole : 0; }

void AddBands(Report& report, const CompareResult& result, const Options& options) {
  const std::string unit = UnitsName(options.units);
  const double whole = result.statistics->area;
  auto list = Json::array();
  std::size_t facets = 0;
  for (const BandArea& band : result.bands) {
    const double share = Share(band.area, whole);
    list.push_back({{"from", OptionalNumber(band.from)},
                    {"to", OptionalNumber(band.to)},
                    {"colour", band.colour},
                    {"facets", band.facets},
                    {"area", band.area},
                    {"share", share}});
    std::string line = "band " + RangeText(band) + ' ' + unit;
    line += ": colour " + std::to_string(band.colour) + ", " + std::to_string(band.facets);
    line += " facets, area " + Fixed(band.area, 3) + ' ' + unit;
    line += "^2 (" + Fixed(100 * share, 3) + " %)";
    report.AddLine(line);
    facets += band.facets;
  }
  report.Add("bands", std::move(list));
  const std::size_t rest = result.mesh.facets.size() - facets;
  report.Add("facets_of_no_band", rest);
  if (rest != 0) report.AddLine("facets that have no band's colour: " + std::to_string(rest));
}

Json PlacesJson(const std::vector<DeviationPlace>& places) {
  auto list = Json::array();
  for (const DeviationPlace& place : places) {
    list.push_back(
        {{"deviation", place.deviation}, {"place", place.place}, {"bound", place.bound}});
  }
  return list;
}

void AddPlaces(Report& report, const std::string& key, const std::string& label,
               const std::vector<DeviationPlace>& places) {
  report.Add(key, PlacesJson(places));
  std::size_t number = 0;
  for (const DeviationPlace& place : places) {
    ++number;
    report.AddLine(label + " " + std::to_string(number) + ": " +
                   Fixed(std::abs(place.deviation), 5) + " at " + PlaceText(place.place) +
                   (number == 1 ? ", nowhere above " + Fixed(place.bound, 5) : ""));
  }
  if (places.empty()) report.AddLine("no " + label);
}

void AddPercentiles(Report& report, const DeviationStatistics& statistics) {
  Json list = Json::object();
  std::string text;
  for (std::size_t i = 0; i < statistics.percentiles.size(); ++i) {
    const std::string percentage = Fixed(DeviationStatistics::kPercentages[i], 0);
    list[percentage] = statistics.percentiles[i];
    text += (text.empty() ? "" : ", ") + percentage + " %: " + Fixed(statistics.percentiles[i], 5);
  }
  report.Add("percentiles", std::move(list), "percentiles", text);
}

std::string LimitText(const char* what, const DeviationPlace& worst, double limit) {
  return std::string("the largest ") + what + ", " + Fixed(std::abs(worst.deviation), 5) + " at " +
         PlaceText(worst.place) + ", passes " + Fixed(limit, 5);
}

bool Passes(const std::vector<DeviationPlace>& places, const std::optional<double>& limit) {
  return limit && !places.empty() && std::abs(places.front().deviation) > *limit;
}

}  // namespace

void AddComparison(Report& report, const CompareResult& result, const Options& options) {
  if (!result.statistics) return;
  const DeviationStatistics& statistics = *result.statistics;
  const std::string unit = std::string(" ") + UnitsName(options.units);
  report.Add("facets_out", result.mesh.facets.size(), "facets out");
  report.Add("area", statistics.area, "area", Fixed(statistics.area, 3) + unit + "^2");
  AddBands(report, result, options);
  report.Add("samples", statistics.samples);
  const auto add = [&](const char* key, const char* label, double value) {
    report.Add(key, value, label, Fixed(value, 5) + unit);
  };
  add("minimum", "minimum", statistics.minimum);
  add("maximum", "maximum", statistics.maximum);
  add("mean", "mean", statistics.mean);
  add("mean_of_size", "mean of size", statistics.meanOfSize);
  add("rms", "root mean square", statistics.rootMeanSquare);
  AddPercentiles(report, statistics);
  AddPlaces(report, "gouges", "gouge", statistics.gouges);
  AddPlaces(report, "excesses", "excess", statistics.excesses);
}

void JudgeLimits(const CompareLimits& limits, CompareResult& result) {
  if (result.verdict.code != kSuccess || !result.statistics) return;
  const DeviationStatistics& statistics = *result.statistics;
  if (Passes(statistics.gouges, limits.gouge)) {
    result.verdict = {kFailed, LimitText("gouge", statistics.gouges.front(), *limits.gouge)};
  } else if (Passes(statistics.excesses, limits.excess)) {
    result.verdict = {kFailed, LimitText("excess", statistics.excesses.front(), *limits.excess)};
  }
}

}  // namespace host

#include <charconv>
#include <fstream>

#include "formats/BinaryWriter.h"
#include "host/files/StagedFile.h"
#include "host/qzhost/CompareReport.h"

namespace host {

namespace {

// The fewest digits that read back as the same number, whatever the locale.
std::string Number(double value) {
  char digits[40];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

std::string Optional(const std::optional<double>& value) { return value ? Number(*value) : ""; }

class Table {
 public:
  void AddBand(const BandArea& band, double whole) {
    m_text += "band," + Optional(band.from) + "," + Optional(band.to) + "," +
              std::to_string(band.colour) + "," + std::to_string(band.facets) + "," +
              Number(band.area) + "," + Number(whole > 0 ? band.area / whole : 0) + ",,,,\n";
  }

  void AddValue(const std::string& item, double value) {
    m_text += item + ",,,,,,," + Number(value) + ",,,\n";
  }

  void AddPlaces(const std::string& item, const std::vector<DeviationPlace>& places) {
    for (const DeviationPlace& place : places) {
      m_text += item + ",,,,,,," + Number(place.deviation);
      for (const double coordinate : place.place) m_text += "," + Number(coordinate);
      m_text += "\n";
    }
  }

  const std::string& Text() const { return m_text; }

 private:
  std::string m_text = "item,from,to,colour,facets,area,share,value,x,y,z\n";
};

}  // namespace

void WriteComparisonCsv(const std::string& path, const CompareResult& result) {
  const DeviationStatistics& statistics = *result.statistics;
  Table table;
  for (const BandArea& band : result.bands) table.AddBand(band, statistics.area);
  table.AddValue("minimum", statistics.minimum);
  table.AddValue("maximum", statistics.maximum);
  table.AddValue("mean", statistics.mean);
  table.AddValue("mean_of_size", statistics.meanOfSize);
  table.AddValue("rms", statistics.rootMeanSquare);
  for (std::size_t i = 0; i < statistics.percentiles.size(); ++i) {
    table.AddValue("percentile_" + Fixed(DeviationStatistics::kPercentages[i], 0),
                   statistics.percentiles[i]);
  }
  table.AddPlaces("gouge", statistics.gouges);
  table.AddPlaces("excess", statistics.excesses);
  StagedFile staged(path);
  formats::BinaryWriter writer(staged.TemporaryPath());
  writer.WriteText(table.Text());
  writer.Finish();
  staged.PutInPlace();
}

}  // namespace host

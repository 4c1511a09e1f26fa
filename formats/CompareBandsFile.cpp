#include "formats/CompareBandsFile.h"

#include <cmath>

#include "formats/BinaryReader.h"
#include "formats/BinaryWriter.h"

namespace formats {
namespace {

constexpr std::uint32_t highestColour = 256;
constexpr std::uint64_t divisionSize = sizeof(std::uint32_t) + sizeof(double);

std::uint32_t ReadColour(BinaryReader& reader, const char* field) {
  const std::uint64_t offset = reader.Offset();
  const auto colour = reader.Read<std::uint32_t>(field);
  if (colour > highestColour) {
    reader.Fail("the " + std::string(field) + " " + std::to_string(colour) + " is not in 0..256",
                offset);
  }
  return colour;
}

double ReadDistance(BinaryReader& reader) {
  const std::uint64_t offset = reader.Offset();
  const auto distance = reader.Read<double>("distance");
  if (!std::isfinite(distance)) reader.Fail("the distance is not a finite number", offset);
  return distance;
}

}  // namespace

CompareBands ReadCompareBands(const std::string& path) {
  BinaryReader reader(path);
  CompareBands bands;
  bands.stockColour = ReadColour(reader, "stock colour");
  const std::uint64_t offset = reader.Offset();
  const auto divisions = reader.Read<std::int32_t>("number of divisions");
  if (divisions < 1) reader.Fail("there are no divisions", offset);
  const auto count = static_cast<std::uint64_t>(divisions);
  reader.RequireRecords(count, divisionSize, "divisions");
  for (std::uint64_t i = 0; i < count; ++i) bands.colours.push_back(ReadColour(reader, "colour"));
  for (std::uint64_t i = 0; i < count; ++i) bands.distances.push_back(ReadDistance(reader));
  return bands;
}

void WriteCompareBands(const std::string& path, const CompareBands& bands) {
  BinaryWriter writer(path);
  writer.Write(bands.stockColour);
  writer.Write(static_cast<std::int32_t>(bands.colours.size()));
  for (const std::uint32_t colour : bands.colours) writer.Write(colour);
  for (const double distance : bands.distances) writer.Write(distance);
  writer.Finish();
}

}  // namespace formats

#include "formats/PathRecordBlocks.h"

#include <limits>

#include "formats/FileError.h"

namespace formats {
namespace {

std::uint64_t ReadPieceCount(BinaryReader& reader, const std::string& field) {
  const std::uint64_t offset = reader.Offset();
  const auto count = reader.Read<std::int32_t>(field);
  if (count < 0) reader.Fail("the " + field + " is negative", offset);
  return static_cast<std::uint64_t>(count);
}

void CheckCut(const std::string& path, const Cut& cut, std::uint64_t doublesPerPosition) {
  if (cut.coordinates.empty()) throw FileError(path + ": a cut has no positions");
  if (cut.coordinates.size() % doublesPerPosition != 0) {
    throw FileError(path + ": a cut's last position is not complete");
  }
  if (cut.coordinates.size() / doublesPerPosition > std::numeric_limits<std::uint32_t>::max()) {
    throw FileError(path + ": a cut has more positions than the file can count");
  }
}

}  // namespace

void ReadTolerancesAndPlacement(BinaryReader& reader, PathRecord& record) {
  record.sweepToler = reader.Read<double>("sweep tolerance");
  record.pathToler = reader.Read<double>("path tolerance");
  record.compressToler = reader.Read<double>("compression tolerance");
  for (double& element : record.matrix) element = reader.Read<double>("matrix");
  for (double& coordinate : record.origin) coordinate = reader.Read<double>("origin");
}

void WriteTolerancesAndPlacement(BinaryWriter& writer, const PathRecord& record) {
  writer.Write(record.sweepToler);
  writer.Write(record.pathToler);
  writer.Write(record.compressToler);
  for (const double element : record.matrix) writer.Write(element);
  for (const double coordinate : record.origin) writer.Write(coordinate);
}

ConvexTool ReadConvexTool(BinaryReader& reader, const std::string& whose) {
  ConvexTool tool;
  tool.cornerRadius = reader.Read<double>(whose + "corner radius");
  tool.flatRadius = reader.Read<double>(whose + "flat radius");
  tool.upperTaperAngle = reader.Read<double>(whose + "upper taper angle");
  tool.lowerTaperAngle = reader.Read<double>(whose + "lower taper angle");
  tool.taperHeight = reader.Read<double>(whose + "taper height");
  tool.upperBevelRadius = reader.Read<double>(whose + "upper bevel radius");
  return tool;
}

void WriteConvexTool(BinaryWriter& writer, const ConvexTool& tool) {
  writer.Write(tool.cornerRadius);
  writer.Write(tool.flatRadius);
  writer.Write(tool.upperTaperAngle);
  writer.Write(tool.lowerTaperAngle);
  writer.Write(tool.taperHeight);
  writer.Write(tool.upperBevelRadius);
}

void ReadArcShape(BinaryReader& reader, ArcPiece& arc) {
  arc.radius = reader.Read<double>("custom arc's radius");
  arc.angleMin = reader.Read<double>("custom arc's smallest angle");
  arc.angleMax = reader.Read<double>("custom arc's largest angle");
  arc.flatLength = reader.Read<double>("custom arc's flat length");
}

void ReadLineShape(BinaryReader& reader, LinePiece& line) {
  line.height = reader.Read<double>("custom line's height");
  line.taperAngle = reader.Read<double>("custom line's taper angle");
  line.flatLength = reader.Read<double>("custom line's flat length");
}

void WriteArcShape(BinaryWriter& writer, const ArcPiece& arc) {
  for (const double value : {arc.radius, arc.angleMin, arc.angleMax, arc.flatLength}) {
    writer.Write(value);
  }
}

void WriteLineShape(BinaryWriter& writer, const LinePiece& line) {
  for (const double value : {line.height, line.taperAngle, line.flatLength}) writer.Write(value);
}

PieceCounts ReadPieceCounts(BinaryReader& reader) {
  const std::uint64_t offset = reader.Offset();
  PieceCounts counts{};
  counts.arcs = ReadPieceCount(reader, "number of custom arcs");
  counts.lines = ReadPieceCount(reader, "number of custom lines");
  if (counts.arcs + counts.lines == 0) reader.Fail("the custom tool has no pieces", offset);
  return counts;
}

void WritePieceCounts(BinaryWriter& writer, const CustomTool& tool) {
  writer.Write(static_cast<std::int32_t>(tool.arcs.size()));
  writer.Write(static_cast<std::int32_t>(tool.lines.size()));
}

void CheckPathType(const BinaryReader& reader, std::int32_t pathType, std::uint64_t offset) {
  if (pathType == 1 || pathType == 2) return;
  reader.Fail("the path type is " + std::to_string(pathType) + ", neither 1 nor 2", offset);
}

void CheckWritable(const std::string& path, const PathRecord& record) {
  if (record.pathType != 1 && record.pathType != 2) {
    throw FileError(path + ": there is no path type " + std::to_string(record.pathType));
  }
  if (const auto* custom = std::get_if<CustomTool>(&record.tool)) {
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    if (custom->arcs.empty() && custom->lines.empty()) {
      throw FileError(path + ": a custom tool has no pieces");
    }
    if (custom->arcs.size() > most || custom->lines.size() > most) {
      throw FileError(path + ": a custom tool has more pieces than the file can count");
    }
  }
  if (record.cuts.empty()) throw FileError(path + ": a path has no cuts");
  for (const Cut& cut : record.cuts) CheckCut(path, cut, DoublesPerPosition(record.pathType));
}

}  // namespace formats

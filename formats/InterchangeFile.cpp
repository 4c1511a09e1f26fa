#include "formats/InterchangeFile.h"

#include <cstdint>
#include <limits>
#include <string_view>

#include "formats/BinaryReader.h"
#include "formats/BinaryWriter.h"
#include "formats/FileError.h"
#include "formats/PathRecordBlocks.h"

namespace formats {
namespace {

constexpr std::string_view delimiter = "binary toolpaths";
constexpr std::int32_t fileVersion = 0;
constexpr std::uint64_t arcPieceSize = 38;
constexpr std::uint64_t linePieceSize = 29;

void ReadHeader(BinaryReader& reader) {
  char bytes[delimiter.size()];
  reader.ReadBytes(bytes, sizeof bytes, "delimiter");
  if (std::string_view(bytes, sizeof bytes) != delimiter) {
    reader.Fail("the delimiter is not \"binary toolpaths\"", 0);
  }
  const std::uint64_t offset = reader.Offset();
  const auto version = reader.Read<std::int32_t>("file format version");
  if (version != fileVersion) {
    reader.Fail("the file format version is " + std::to_string(version) + ", not 0", offset);
  }
}

UndercutTool ReadUndercutTool(BinaryReader& reader) {
  UndercutTool tool;
  tool.armRadius = reader.Read<double>("arm radius");
  tool.armHeight = reader.Read<double>("arm height");
  tool.useFlip = reader.ReadFlag("use flip tool flag");
  tool.flip = ReadConvexTool(reader, "flip ");
  tool.useRegular = reader.ReadFlag("use regular tool flag");
  tool.regular = ReadConvexTool(reader, "regular ");
  return tool;
}

ArcPiece ReadArcPiece(BinaryReader& reader) {
  ArcPiece arc;
  arc.index = reader.Read<std::int32_t>("custom arc's index");
  ReadArcShape(reader, arc);
  arc.flip = reader.ReadFlag("custom arc's flip flag");
  arc.convex = reader.ReadFlag("custom arc's convex flag");
  return arc;
}

LinePiece ReadLinePiece(BinaryReader& reader) {
  LinePiece line;
  line.index = reader.Read<std::int32_t>("custom line's index");
  ReadLineShape(reader, line);
  line.flip = reader.ReadFlag("custom line's flip flag");
  return line;
}

CustomTool ReadCustomTool(BinaryReader& reader) {
  const PieceCounts counts = ReadPieceCounts(reader);
  CustomTool tool;
  reader.RequireRecords(counts.arcs, arcPieceSize, "custom arcs");
  tool.arcs.reserve(static_cast<std::size_t>(counts.arcs));
  for (std::uint64_t i = 0; i < counts.arcs; ++i) tool.arcs.push_back(ReadArcPiece(reader));
  reader.RequireRecords(counts.lines, linePieceSize, "custom lines");
  tool.lines.reserve(static_cast<std::size_t>(counts.lines));
  for (std::uint64_t i = 0; i < counts.lines; ++i) tool.lines.push_back(ReadLinePiece(reader));
  return tool;
}

Tool ReadTool(BinaryReader& reader) {
  const std::uint64_t offset = reader.Offset();
  const auto type = reader.Read<std::int32_t>("tool type");
  switch (type) {
    case 1:
      return ReadConvexTool(reader, "");
    case 2:
      return ReadUndercutTool(reader);
    case 3:
      return ReadCustomTool(reader);
    default:
      reader.Fail("the tool type is " + std::to_string(type) + ", none of 1, 2 and 3", offset);
  }
}

std::uint32_t ReadCountAboveZero(BinaryReader& reader, const std::string& field) {
  const std::uint64_t offset = reader.Offset();
  const auto count = reader.Read<std::uint32_t>(field);
  if (count == 0) reader.Fail("the " + field + " is 0", offset);
  return count;
}

PathRecord ReadPathRecord(BinaryReader& reader) {
  PathRecord record;
  const std::uint64_t offset = reader.Offset();
  record.pathType = reader.Read<std::int32_t>("path type");
  CheckPathType(reader, record.pathType, offset);
  record.colour = reader.Read<std::int32_t>("colour");
  ReadTolerancesAndPlacement(reader, record);
  record.tool = ReadTool(reader);
  const std::uint32_t cuts = ReadCountAboveZero(reader, "number of cuts");
  // Each cut grows the list only after its own bytes have been found in the file.
  for (std::uint32_t i = 0; i < cuts; ++i) {
    const std::uint64_t positions = ReadCountAboveZero(reader, "number of tool positions");
    const std::uint64_t doubles = positions * DoublesPerPosition(record.pathType);
    record.cuts.push_back({reader.ReadDoubles(doubles, "tool positions")});
  }
  return record;
}

void WriteUndercutTool(BinaryWriter& writer, const UndercutTool& tool) {
  writer.Write(tool.armRadius);
  writer.Write(tool.armHeight);
  writer.WriteFlag(tool.useFlip);
  WriteConvexTool(writer, tool.flip);
  writer.WriteFlag(tool.useRegular);
  WriteConvexTool(writer, tool.regular);
}

void WriteCustomTool(BinaryWriter& writer, const CustomTool& tool) {
  WritePieceCounts(writer, tool);
  for (const ArcPiece& arc : tool.arcs) {
    writer.Write(arc.index);
    WriteArcShape(writer, arc);
    writer.WriteFlag(arc.flip);
    writer.WriteFlag(arc.convex);
  }
  for (const LinePiece& line : tool.lines) {
    writer.Write(line.index);
    WriteLineShape(writer, line);
    writer.WriteFlag(line.flip);
  }
}

void WriteTool(BinaryWriter& writer, const Tool& tool) {
  writer.Write(static_cast<std::int32_t>(tool.index() + 1));
  if (const auto* convex = std::get_if<ConvexTool>(&tool)) WriteConvexTool(writer, *convex);
  if (const auto* undercut = std::get_if<UndercutTool>(&tool)) WriteUndercutTool(writer, *undercut);
  if (const auto* custom = std::get_if<CustomTool>(&tool)) WriteCustomTool(writer, *custom);
}

void WritePathRecord(BinaryWriter& writer, const PathRecord& record) {
  writer.Write(record.pathType);
  writer.Write(record.colour);
  WriteTolerancesAndPlacement(writer, record);
  WriteTool(writer, record.tool);
  writer.Write(static_cast<std::uint32_t>(record.cuts.size()));
  for (const Cut& cut : record.cuts) {
    const std::uint64_t positions = cut.coordinates.size() / DoublesPerPosition(record.pathType);
    writer.Write(static_cast<std::uint32_t>(positions));
    writer.WriteBytes(cut.coordinates.data(), cut.coordinates.size() * sizeof(double));
  }
}

}  // namespace

std::vector<PathRecord> ReadInterchangeFile(const std::string& path) {
  BinaryReader reader(path);
  ReadHeader(reader);
  const auto paths = reader.Read<std::uint32_t>("number of paths");
  std::vector<PathRecord> records;
  for (std::uint32_t i = 0; i < paths; ++i) records.push_back(ReadPathRecord(reader));
  return records;
}

void WriteInterchangeFile(const std::string& path, const std::vector<PathRecord>& records) {
  constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
  if (records.size() > most) throw FileError(path + ": more paths than the file can count");
  for (const PathRecord& record : records) {
    CheckWritable(path, record);
    if (record.cuts.size() > most) throw FileError(path + ": more cuts than the file can count");
  }
  BinaryWriter writer(path);
  writer.WriteText(delimiter);
  writer.Write(fileVersion);
  writer.Write(static_cast<std::uint32_t>(records.size()));
  for (const PathRecord& record : records) WritePathRecord(writer, record);
  writer.Finish();
}

}  // namespace formats

#include "formats/PathInfoFile.h"

#include <cstdint>

#include "formats/BinaryReader.h"
#include "formats/BinaryWriter.h"
#include "formats/FileError.h"
#include "formats/PathRecordBlocks.h"

namespace formats {
namespace {

// In a per-path file a custom tool's pieces are parallel arrays: flips, indices, values, and for
// arcs a last array of convex flags.
constexpr std::uint64_t arcBytes = 1 + 4 + 4 * 8 + 1;
constexpr std::uint64_t lineBytes = 1 + 4 + 3 * 8;

UndercutTool ReadUndercutTool(BinaryReader& reader) {
  UndercutTool tool;
  tool.useFlip = reader.ReadFlag("use flip tool flag");
  tool.useRegular = reader.ReadFlag("use regular tool flag");
  tool.armRadius = reader.Read<double>("arm radius");
  tool.armHeight = reader.Read<double>("arm height");
  tool.flip = ReadConvexTool(reader, "flip ");
  tool.regular = ReadConvexTool(reader, "regular ");
  return tool;
}

std::vector<ArcPiece> ReadArcs(BinaryReader& reader, std::uint64_t count) {
  reader.RequireRecords(count, arcBytes, "custom arcs");
  std::vector<ArcPiece> arcs(static_cast<std::size_t>(count));
  for (ArcPiece& arc : arcs) arc.flip = reader.ReadFlag("custom arcs' flip flags");
  for (ArcPiece& arc : arcs) arc.index = reader.Read<std::int32_t>("custom arcs' indices");
  for (ArcPiece& arc : arcs) ReadArcShape(reader, arc);
  for (ArcPiece& arc : arcs) arc.convex = reader.ReadFlag("custom arcs' convex flags");
  return arcs;
}

std::vector<LinePiece> ReadLines(BinaryReader& reader, std::uint64_t count) {
  reader.RequireRecords(count, lineBytes, "custom lines");
  std::vector<LinePiece> lines(static_cast<std::size_t>(count));
  for (LinePiece& line : lines) line.flip = reader.ReadFlag("custom lines' flip flags");
  for (LinePiece& line : lines) line.index = reader.Read<std::int32_t>("custom lines' indices");
  for (LinePiece& line : lines) ReadLineShape(reader, line);
  return lines;
}

Tool ReadTool(BinaryReader& reader) {
  const std::uint64_t offset = reader.Offset();
  const auto type = reader.Read<std::int16_t>("tool type");
  switch (type) {
    case 1:
      return ReadConvexTool(reader, "");
    case 2:
      return ReadUndercutTool(reader);
    case 3: {
      const PieceCounts counts = ReadPieceCounts(reader);
      CustomTool tool;
      tool.arcs = ReadArcs(reader, counts.arcs);
      tool.lines = ReadLines(reader, counts.lines);
      return tool;
    }
    default:
      reader.Fail("the tool type is " + std::to_string(type) + ", none of 1, 2 and 3", offset);
  }
}

// Everything up to the end of the file.
Cut ReadPositions(BinaryReader& reader, std::int32_t pathType) {
  const std::uint64_t positionSize = DoublesPerPosition(pathType) * sizeof(double);
  const std::uint64_t left = reader.Remaining();
  if (left == 0) reader.Fail("the path has no positions", reader.Offset());
  if (left % positionSize != 0) {
    reader.Fail("the last position is cut short", reader.Offset() + left - left % positionSize);
  }
  return {reader.ReadDoubles(left / sizeof(double), "tool positions")};
}

void WriteUndercutTool(BinaryWriter& writer, const UndercutTool& tool) {
  writer.WriteFlag(tool.useFlip);
  writer.WriteFlag(tool.useRegular);
  writer.Write(tool.armRadius);
  writer.Write(tool.armHeight);
  WriteConvexTool(writer, tool.flip);
  WriteConvexTool(writer, tool.regular);
}

void WriteCustomTool(BinaryWriter& writer, const CustomTool& tool) {
  WritePieceCounts(writer, tool);
  for (const ArcPiece& arc : tool.arcs) writer.WriteFlag(arc.flip);
  for (const ArcPiece& arc : tool.arcs) writer.Write(arc.index);
  for (const ArcPiece& arc : tool.arcs) WriteArcShape(writer, arc);
  for (const ArcPiece& arc : tool.arcs) writer.WriteFlag(arc.convex);
  for (const LinePiece& line : tool.lines) writer.WriteFlag(line.flip);
  for (const LinePiece& line : tool.lines) writer.Write(line.index);
  for (const LinePiece& line : tool.lines) WriteLineShape(writer, line);
}

void WriteTool(BinaryWriter& writer, const Tool& tool) {
  writer.Write(static_cast<std::int16_t>(tool.index() + 1));
  if (const auto* convex = std::get_if<ConvexTool>(&tool)) WriteConvexTool(writer, *convex);
  if (const auto* undercut = std::get_if<UndercutTool>(&tool)) WriteUndercutTool(writer, *undercut);
  if (const auto* custom = std::get_if<CustomTool>(&tool)) WriteCustomTool(writer, *custom);
}

}  // namespace

PathRecord ReadPathInfoFile(const std::string& path) {
  BinaryReader reader(path);
  PathRecord record;
  record.pathType = reader.Read<std::int16_t>("path type");
  CheckPathType(reader, record.pathType, 0);
  record.colour = reader.Read<std::uint8_t>("colour");
  ReadTolerancesAndPlacement(reader, record);
  record.tool = ReadTool(reader);
  record.cuts.push_back(ReadPositions(reader, record.pathType));
  return record;
}

void WritePathInfoFile(const std::string& path, const PathRecord& record) {
  CheckWritable(path, record);
  if (record.cuts.size() != 1) throw FileError(path + ": a per-path file holds exactly one cut");
  if (record.colour < 0 || record.colour > 255) {
    throw FileError(path + ": the colour " + std::to_string(record.colour) + " is not in 0..255");
  }
  BinaryWriter writer(path);
  writer.Write(static_cast<std::int16_t>(record.pathType));
  writer.Write(static_cast<std::uint8_t>(record.colour));
  WriteTolerancesAndPlacement(writer, record);
  WriteTool(writer, record.tool);
  const std::vector<double>& coordinates = record.cuts.front().coordinates;
  writer.WriteBytes(coordinates.data(), coordinates.size() * sizeof(double));
  writer.Finish();
}

}  // namespace formats

#pragma once

#include <string>

#include "formats/BinaryReader.h"
#include "formats/BinaryWriter.h"
#include "formats/ToolpathRecords.h"

namespace formats {

// What the interchange file and the per-path files lay out alike.

// The three tolerances, the matrix and the origin.
void ReadTolerancesAndPlacement(BinaryReader& reader, PathRecord& record);
void WriteTolerancesAndPlacement(BinaryWriter& writer, const PathRecord& record);

// Six doubles. `whose` goes before each field's name in messages ("flip " or empty).
ConvexTool ReadConvexTool(BinaryReader& reader, const std::string& whose);
void WriteConvexTool(BinaryWriter& writer, const ConvexTool& tool);

// What describes the shape of a custom tool's piece: an arc's four doubles, a line's three. Where
// its index and its flags stand is each file's own affair.
void ReadArcShape(BinaryReader& reader, ArcPiece& arc);
void ReadLineShape(BinaryReader& reader, LinePiece& line);
void WriteArcShape(BinaryWriter& writer, const ArcPiece& arc);
void WriteLineShape(BinaryWriter& writer, const LinePiece& line);

// How many arcs and lines a custom tool has, checked: none negative, not both 0.
struct PieceCounts {
  std::uint64_t arcs;
  std::uint64_t lines;
};
PieceCounts ReadPieceCounts(BinaryReader& reader);
void WritePieceCounts(BinaryWriter& writer, const CustomTool& tool);

// Fail for path types other than 1 and 2; `offset` is where the type stood.
void CheckPathType(const BinaryReader& reader, std::int32_t pathType, std::uint64_t offset);

// The checks that both writers make before the first byte; they throw FileError about `path`.
void CheckWritable(const std::string& path, const PathRecord& record);

}  // namespace formats

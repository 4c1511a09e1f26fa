#pragma once

#include <array>
#include <cstdint>
#include <variant>
#include <vector>

namespace formats {

// Lengths in the host's units, angles in degrees.

// Tool type 1: a tool without undercut.
struct ConvexTool {
  double cornerRadius = 0;
  double flatRadius = 0;
  double upperTaperAngle = 0;
  double lowerTaperAngle = 0;
  double taperHeight = 0;
  double upperBevelRadius = 0;
};

// Tool type 2: an arm with a convex tool upside down, one the right way up, or both.
struct UndercutTool {
  double armRadius = 0;
  double armHeight = 0;
  bool useFlip = false;
  ConvexTool flip;
  bool useRegular = false;
  ConvexTool regular;
};

struct ArcPiece {
  std::int32_t index = 0;  // the piece's place in the profile, among arcs and lines together
  double radius = 0;
  double angleMin = 0;
  double angleMax = 0;
  double flatLength = 0;
  bool flip = false;
  bool convex = false;
};

struct LinePiece {
  std::int32_t index = 0;
  double height = 0;
  double taperAngle = 0;
  double flatLength = 0;
  bool flip = false;
};

// Tool type 3: a profile of arcs and lines.
struct CustomTool {
  std::vector<ArcPiece> arcs;
  std::vector<LinePiece> lines;
};

using Tool = std::variant<ConvexTool, UndercutTool, CustomTool>;  // index + 1 is the tool type

// Tip positions in the order they are run through: x, y, z of a 3-axis path; x, y, z and the axis
// vector i, j, k of a 5-axis path.
struct Cut {
  std::vector<double> coordinates;
};

struct PathRecord {
  std::int32_t pathType = 1;  // 1: 3-axis, 2: 5-axis
  std::int32_t colour = 0;
  double sweepToler = 0;
  double pathToler = 0;
  double compressToler = 0;
  std::array<double, 9> matrix = {1, 0, 0, 0, 1, 0, 0, 0, 1};  // row by row
  std::array<double, 3> origin = {0, 0, 0};
  Tool tool;
  std::vector<Cut> cuts;
};

// Doubles in one position of a path of that type.
constexpr std::uint64_t DoublesPerPosition(std::int32_t pathType) { return pathType == 1 ? 3 : 6; }

}  // namespace formats

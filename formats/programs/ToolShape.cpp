#include "formats/programs/ToolShape.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "formats/DecimalText.h"
#include "formats/programs/DegreeTrigonometry.h"

namespace formats {
namespace {

std::string LengthFault(const char* name, double value) {
  if (!std::isfinite(value)) {
    return std::string(name) + " is not a finite number";
  }
  return value < 0 ? std::string(name) + " is negative" : "";
}

std::string AngleFault(double upper, double lower) {
  if (!(upper >= 0 && upper < 90)) {
    return "upperTaperAngle is not within 0 to below 90 degrees";
  }
  if (!(lower > 0 && lower <= 90)) {
    return "lowerTaperAngle is not within above 0 to 90 degrees";
  }
  return upper > lower ? "upperTaperAngle is above lowerTaperAngle" : "";
}

// Height where the wall begins: lower face, then the corner arc.
double WallStart(const ConvexTool& tool, double lower) {
  const SineCosine face = SineCosineOfDegrees(lower);
  const SineCosine wall = SineCosineOfDegrees(tool.upperTaperAngle);
  const double faceEnd =
      (tool.flatRadius + tool.cornerRadius * face.cosine) * face.cosine / face.sine;
  return faceEnd + tool.cornerRadius * (face.sine - wall.sine);
}

std::string PieceFault(const ArcPiece& arc) {
  if (!(std::isfinite(arc.radius) && arc.radius > 0)) {
    return "radius is not above zero";
  }
  if (!(arc.angleMin >= 0 && arc.angleMin < arc.angleMax && arc.angleMax <= 180)) {
    return "angleMin and angleMax are not in order within 0 to 180 degrees";
  }
  return LengthFault("flatLength", arc.flatLength);
}

std::string PieceFault(const LinePiece& line) {
  if (!(std::isfinite(line.height) && line.height > 0)) {
    return "height is not above zero";
  }
  if (!(line.taperAngle >= 0 && line.taperAngle < 90)) {
    return "taperAngle is not within 0 to below 90 degrees";
  }
  return LengthFault("flatLength", line.flatLength);
}

template <typename Piece>
std::string FaultOfPieces(const std::vector<Piece>& pieces, const char* list,
                          std::set<std::int32_t>& indices) {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const std::string where = std::string(list) + "[" + std::to_string(i) + "].";
    if (const std::string fault = PieceFault(pieces[i]); !fault.empty()) {
      return where + fault;
    }
    if (!indices.insert(pieces[i].index).second) {
      return where + "index is that of another piece";
    }
  }
  return "";
}

}  // namespace

std::string FaultOf(const ConvexTool& tool) {
  for (const auto& [name, value] :
       {std::pair("cornerRadius", tool.cornerRadius), std::pair("flatRadius", tool.flatRadius),
        std::pair("taperHeight", tool.taperHeight),
        std::pair("upperBevelRadius", tool.upperBevelRadius)}) {
    if (std::string fault = LengthFault(name, value); !fault.empty()) {
      return fault;
    }
  }
  const double lower = tool.lowerTaperAngle == 0 ? 90 : tool.lowerTaperAngle;
  if (std::string fault = AngleFault(tool.upperTaperAngle, lower); !fault.empty()) {
    return fault;
  }
  const double start = WallStart(tool, lower);
  const SineCosine wall = SineCosineOfDegrees(tool.upperTaperAngle);
  // Heights worked out by hand and written in decimals may miss the wall's start by rounding.
  const double rounding = 1e-12 * (tool.cornerRadius + tool.flatRadius + start);
  if (tool.taperHeight != 0 && tool.taperHeight < start - rounding) {
    return "taperHeight is below the start of the wall, " + DecimalText(start);
  }
  const bool hasUpperEdge = tool.taperHeight != 0 && tool.upperTaperAngle > 0;
  const double wallLength = (tool.taperHeight - start) / wall.cosine;
  const double tangentLength = tool.upperBevelRadius * wall.sine / (1 + wall.cosine);
  if (hasUpperEdge && tangentLength > wallLength + rounding) {
    return "upperBevelRadius does not fit on the wall";
  }
  const bool hasWidth = tool.cornerRadius > 0 || tool.flatRadius > 0 ||
                        (tool.upperTaperAngle > 0 && (!hasUpperEdge || wallLength > 0));
  return hasWidth ? "" : "cornerRadius and flatRadius are 0: the tool has no width";
}

std::string FaultOf(const CustomTool& tool) {
  if (tool.arcs.empty() && tool.lines.empty()) {
    return "arcs and lines are empty: the tool has no pieces";
  }
  std::set<std::int32_t> indices;
  std::string fault = FaultOfPieces(tool.arcs, "arcs", indices);
  return fault.empty() ? FaultOfPieces(tool.lines, "lines", indices) : fault;
}

}  // namespace formats

#include "formats/programs/UndercutPieces.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "formats/programs/DegreeTrigonometry.h"
#include "formats/programs/ToolShape.h"

namespace formats {
namespace {

// One profile of the head, from its flat end to its widest height: lower face, corner, wall. The
// pieces' places are left to the caller.
struct HalfHead {
  double height = 0;
  CustomTool pieces;
  std::vector<bool> isArc;  // which list the next piece comes from, from the flat end on
};

void AddLine(HalfHead& head, double radius, double height, double angle) {
  if (height > 0) {
    head.pieces.lines.push_back({0, height, angle, radius, false});
    head.isArc.push_back(false);
    head.height += height;
  }
}

HalfHead PiecesOf(const ConvexTool& tool) {
  const double lower = tool.lowerTaperAngle == 0 ? 90 : tool.lowerTaperAngle;
  const double upper = tool.upperTaperAngle;
  const SineCosine face = SineCosineOfDegrees(lower);
  const SineCosine wall = SineCosineOfDegrees(upper);
  HalfHead head;
  if (lower < 90) {
    const double reach = tool.flatRadius + tool.cornerRadius * face.cosine;
    AddLine(head, 0, reach * face.cosine / face.sine, lower);
  }
  if (tool.cornerRadius > 0 && upper < lower) {
    head.pieces.arcs.push_back(
        {0, tool.cornerRadius, 90 - lower, 90 - upper, tool.flatRadius, false, true});
    head.isArc.push_back(true);
    head.height += tool.cornerRadius * (face.sine - wall.sine);
  }
  if (tool.taperHeight != 0) {
    AddLine(head, tool.flatRadius + tool.cornerRadius * wall.cosine, tool.taperHeight - head.height,
            upper);
  }
  return head;
}

// A line piece upside down begins where it ended, and narrows.
LinePiece Flipped(LinePiece line) {
  const SineCosine taper = SineCosineOfDegrees(line.taperAngle);
  line.flatLength += line.height * taper.sine / taper.cosine;
  line.flip = true;
  return line;
}

// For an arc, `flip` says all of it.
ArcPiece Flipped(ArcPiece arc) {
  arc.flip = true;
  return arc;
}

void Append(const HalfHead& head, bool flip, CustomTool& tool) {
  auto index = static_cast<std::int32_t>(tool.arcs.size() + tool.lines.size());
  const std::size_t count = head.isArc.size();
  std::size_t arcs = flip ? head.pieces.arcs.size() : 0;
  std::size_t lines = flip ? head.pieces.lines.size() : 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (head.isArc[flip ? count - 1 - i : i]) {
      const ArcPiece& arc = head.pieces.arcs[flip ? --arcs : arcs++];
      tool.arcs.push_back(flip ? Flipped(arc) : arc);
      tool.arcs.back().index = index++;
    } else {
      const LinePiece& line = head.pieces.lines[flip ? --lines : lines++];
      tool.lines.push_back(flip ? Flipped(line) : line);
      tool.lines.back().index = index++;
    }
  }
}

void Check(const ConvexTool& profile, const char* name) {
  if (const std::string fault = FaultOf(profile); !fault.empty()) {
    throw std::invalid_argument(std::string(name) + "." + fault);
  }
}

}  // namespace

CustomTool UndercutPieces(const UndercutTool& tool) {
  if (!tool.useFlip && !tool.useRegular) {
    throw std::invalid_argument("neither regular nor flip profile: the tool has no head");
  }
  CustomTool pieces;
  double top = 0;
  if (tool.useRegular) {
    Check(tool.regular, "regular");
    const HalfHead head = PiecesOf(tool.regular);
    Append(head, false, pieces);
    top += head.height;
  }
  if (tool.useFlip) {
    Check(tool.flip, "flip");
    const HalfHead head = PiecesOf(tool.flip);
    Append(head, true, pieces);
    top += head.height;
  }
  if (!(std::isfinite(tool.armRadius) && tool.armRadius >= 0)) {
    throw std::invalid_argument("armRadius is not a length");
  }
  if (!(std::isfinite(tool.armHeight) && tool.armHeight >= 0)) {
    throw std::invalid_argument("armHeight is not a length");
  }
  // A tool has no top: its last radius is taken to go on. An arm which ends, or is not there,
  // therefore ends in a cylinder of no width.
  const auto line = [&pieces](double height, double radius) {
    const auto index = static_cast<std::int32_t>(pieces.arcs.size() + pieces.lines.size());
    pieces.lines.push_back({index, height, 0, radius, false});
  };
  const bool hasArm = tool.armRadius > 0 && (tool.armHeight == 0 || tool.armHeight > top);
  const double any = tool.armRadius > 0 ? tool.armRadius : 1;
  if (hasArm) {
    line(tool.armHeight == 0 ? any : tool.armHeight - top, tool.armRadius);
  }
  if (!hasArm || tool.armHeight != 0) {
    line(any, 0);
  }
  return pieces;
}

}  // namespace formats

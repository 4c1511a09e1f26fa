#include "InterchangeLines.h"

#include <cstdio>

namespace lines {
namespace {

std::string NumberLine(double value, const std::string& comment) {
  return Number(value) + " //" + comment + "\n";
}

std::string IntegerLine(long long value, const std::string& comment) {
  return std::to_string(value) + " //" + comment + "\n";
}

std::string FlagLine(bool value, const std::string& comment) {
  return (value ? "true //" : "false //") + comment + "\n";
}

std::string TripleLine(const double* xyz, const std::string& comment) {
  return Number(xyz[0]) + " " + Number(xyz[1]) + " " + Number(xyz[2]) + " // " + comment + "\n";
}

std::string SixLines(const double* values, const std::string& before) {
  std::string text;
  int i = 0;
  for (const char* name : {"corner radius", "flat radius", "upper taper angle", "lower taper angle",
                           "taper height", "upper bevel radius"}) {
    text += NumberLine(values[i++], before + name);
  }
  return text;
}

struct ToolLines {
  std::string operator()(const support::ConvexBlock& tool) const {
    return SixLines(tool.values.data(), "");
  }
  std::string operator()(const support::UndercutBlock& tool) const {
    return NumberLine(tool.values[0], "arm radius") + NumberLine(tool.values[1], "arm height") +
           FlagLine(tool.useFlip, "use flip tool") + SixLines(&tool.values[2], "flip ") +
           FlagLine(tool.useRegular, "use regular tool") + SixLines(&tool.values[8], "regular ");
  }
  std::string operator()(const support::CustomBlock& tool) const {
    std::string text =
        IntegerLine(static_cast<long long>(tool.arcs.size()), "number of custom arc segments") +
        IntegerLine(static_cast<long long>(tool.lines.size()), "number of custom line segments");
    for (const auto& arc : tool.arcs) {
      text += IntegerLine(arc.index, "custom arc piece index") +
              NumberLine(arc.values[0], "radius") + NumberLine(arc.values[1], "angle Min") +
              NumberLine(arc.values[2], "angle Max") + NumberLine(arc.values[3], "flat Length") +
              FlagLine(arc.flip, "flip") + FlagLine(arc.convex, "convex");
    }
    for (const auto& line : tool.lines) {
      text += IntegerLine(line.index, "custom line piece index") +
              NumberLine(line.values[0], "height") + NumberLine(line.values[1], "taper Angle") +
              NumberLine(line.values[2], "flat Length") + FlagLine(line.flip, "flip");
    }
    return text;
  }
};

std::string Placement(const support::Path& path) {
  std::string text;
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      text += NumberLine(path.matrix[3 * row + column],
                         "matrix[" + std::to_string(row) + "," + std::to_string(column) + "]");
    }
  }
  for (std::size_t i = 0; i < 3; ++i) {
    text += NumberLine(path.origin[i], "origin[" + std::to_string(i) + "]");
  }
  return text;
}

}  // namespace

std::string Number(double value) {
  char text[400];
  std::snprintf(text, sizeof text, "%20.10f", value);
  return text;
}

std::string Head(const std::string& pathCount) {
  return "binary toolpaths //16 chars delimiter is not written\n0 //file format version\n" +
         pathCount + " //number of paths (0 or more)\n";
}

std::string PathHead(const support::Path& path, const std::string& cutCount) {
  return IntegerLine(path.pathType, "pathType 1=3-axis, 2=5-axis") +
         IntegerLine(path.colour, "color") +
         NumberLine(path.sweepToler, "sweepToler (aka toolToler)") +
         NumberLine(path.pathToler, "pathToler") + NumberLine(path.compressToler, "compressToler") +
         Placement(path) +
         IntegerLine(static_cast<long long>(path.tool.index()) + 1,
                     "tool type 1=standard convex, 2=standard undercut, 3=standard custom") +
         std::visit(ToolLines{}, path.tool) + cutCount + " //number of Cuts (1 or more)\n";
}

std::string Cut(const support::Path& path) {
  const std::size_t doubles = path.pathType == 1 ? 3 : 6;
  std::string text = IntegerLine(static_cast<long long>(path.positions.size() / doubles),
                                 "number of Tool Positions (1 or more)");
  for (std::size_t i = 0; i < path.positions.size(); i += doubles) {
    if (doubles == 3) {
      text += TripleLine(&path.positions[i], "3axis tip position");
    } else {
      text += TripleLine(&path.positions[i], "5axis tip position") +
              TripleLine(&path.positions[i + 3], "5axis ijk vector");
    }
  }
  return text;
}

std::string File(const std::vector<support::Path>& paths) {
  std::string text = Head(std::to_string(paths.size()));
  for (const support::Path& path : paths) text += PathHead(path) + Cut(path);
  return text;
}

}  // namespace lines

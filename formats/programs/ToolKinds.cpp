#include "formats/programs/ToolKinds.h"

#include <array>
#include <cmath>
#include <string_view>

#include "formats/programs/DegreeTrigonometry.h"
#include "formats/programs/ToolShape.h"
#include "formats/programs/UndercutPieces.h"

namespace formats {
namespace {

double Positive(JsonFields& fields, const std::string& key) {
  const double value = fields.Number(key);
  if (!(value > 0)) {
    throw JsonFault(fields.Where(key) + " is not above zero");
  }
  return value;
}

double NotNegative(JsonFields& fields, const std::string& key) {
  const double value = fields.NumberOr(key, 0);
  if (value < 0) {
    throw JsonFault(fields.Where(key) + " is negative");
  }
  return value;
}

double Between(JsonFields& fields, const std::string& key, double lowest, double highest) {
  const double value = fields.Number(key);
  if (!(value > lowest && value < highest)) {
    throw JsonFault(fields.Where(key) + " is not between " +
                    std::to_string(static_cast<int>(lowest)) + " and " +
                    std::to_string(static_cast<int>(highest)) + " degrees");
  }
  return value;
}

double Tangent(double degrees) {
  const SineCosine angle = SineCosineOfDegrees(degrees);
  return angle.sine / angle.cosine;
}

ConvexTool Convex(JsonFields& fields) {
  ConvexTool tool;
  tool.cornerRadius = fields.NumberOr("cornerRadius", 0);
  tool.flatRadius = fields.NumberOr("flatRadius", 0);
  tool.upperTaperAngle = fields.NumberOr("upperTaperAngle", 0);
  tool.lowerTaperAngle = fields.NumberOr("lowerTaperAngle", 90);
  tool.taperHeight = fields.NumberOr("taperHeight", 0);
  tool.upperBevelRadius = fields.NumberOr("upperBevelRadius", 0);
  return tool;
}

ConvexTool Flat(JsonFields& fields) { return {0, Positive(fields, "diameter") / 2, 0, 90, 0, 0}; }

ConvexTool Ball(JsonFields& fields) { return {Positive(fields, "diameter") / 2, 0, 0, 90, 0, 0}; }

ConvexTool BullNose(JsonFields& fields) {
  const double radius = Positive(fields, "diameter") / 2;
  const double corner = Positive(fields, "cornerRadius");
  if (corner > radius) {
    throw JsonFault(fields.Where("cornerRadius") + " is above half the diameter");
  }
  return {corner, radius - corner, 0, 90, 0, 0};
}

// Height where a wall reaches a radius; 0, never, when no widest diameter is given.
double WidestHeight(JsonFields& fields, double wallRadius, double wallHeight, double taper) {
  if (!fields.Has("maxDiameter")) {
    return 0;
  }
  const double widest = Positive(fields, "maxDiameter") / 2;
  const double height = wallHeight + (widest - wallRadius) / Tangent(taper);
  if (widest < wallRadius || !(height > 0)) {
    throw JsonFault(fields.Where("maxDiameter") + " is below that of the wall's start");
  }
  return height;
}

// tipDiameter is that of the sharp-edged or round-cornered end, measured where the wall begins when
// there is no corner radius, and across the corner's full round otherwise.
ConvexTool Tapered(JsonFields& fields) {
  const double radius = Positive(fields, "tipDiameter") / 2;
  const double corner = NotNegative(fields, "cornerRadius");
  const double taper = Between(fields, "taperAngle", 0, 90);
  if (corner > radius) {
    throw JsonFault(fields.Where("cornerRadius") + " is above half the tip's diameter");
  }
  const SineCosine wall = SineCosineOfDegrees(taper);
  const double flat = radius - corner;
  const double height =
      WidestHeight(fields, flat + corner * wall.cosine, corner * (1 - wall.sine), taper);
  return {corner, flat, taper, 90, height, 0};
}

// Pointed, or with a small flat at the tip.
ConvexTool Chamfer(JsonFields& fields) {
  const double radius = Positive(fields, "diameter") / 2;
  const double tip = NotNegative(fields, "tipDiameter") / 2;
  const double half = Between(fields, "pointAngle", 0, 180) / 2;
  if (tip >= radius) {
    throw JsonFault(fields.Where("tipDiameter") + " is not below the diameter");
  }
  if (tip == 0) {
    return {0, radius, 0, half, 0, 0};
  }
  return {0, tip, half, 90, (radius - tip) / Tangent(half), 0};
}

ConvexTool Drill(JsonFields& fields) {
  const double radius = Positive(fields, "diameter") / 2;
  return {0, radius, 0, Between(fields, "pointAngle", 0, 180) / 2, 0, 0};
}

ConvexTool ScaledConvex(ConvexTool tool, const LengthScale& scale) {
  tool.cornerRadius = scale(tool.cornerRadius);
  tool.flatRadius = scale(tool.flatRadius);
  tool.taperHeight = scale(tool.taperHeight);
  tool.upperBevelRadius = scale(tool.upperBevelRadius);
  return tool;
}

Tool Undercut(JsonFields& fields, const LengthScale& scale) {
  UndercutTool tool;
  tool.armRadius = scale(fields.Number("armRadius"));
  tool.armHeight = scale(fields.NumberOr("armHeight", 0));
  const auto profile = [&](const std::string& key, bool& use) {
    use = fields.Has(key);
    if (!use) {
      return ConvexTool{};
    }
    JsonFields members(fields.Object(key), fields.Where(key));
    const ConvexTool read = ScaledConvex(Convex(members), scale);
    members.Finish();
    return read;
  };
  tool.regular = profile("regular", tool.useRegular);
  tool.flip = profile("flip", tool.useFlip);
  try {
    return UndercutPieces(tool);
  } catch (const std::invalid_argument& fault) {
    throw JsonFault(fields.Where(fault.what()));
  }
}

ArcPiece ReadArc(JsonFields& fields, const LengthScale& scale) {
  ArcPiece arc;
  arc.index = fields.Integer("index", 0, 1'000'000);
  arc.radius = scale(fields.Number("radius"));
  arc.angleMin = fields.Number("angleMin");
  arc.angleMax = fields.Number("angleMax");
  arc.flatLength = scale(fields.NumberOr("flatLength", 0));
  arc.flip = fields.FlagOr("flip", false);
  arc.convex = fields.FlagOr("convex", true);
  return arc;
}

LinePiece ReadLine(JsonFields& fields, const LengthScale& scale) {
  LinePiece line;
  line.index = fields.Integer("index", 0, 1'000'000);
  line.height = scale(fields.Number("height"));
  line.taperAngle = fields.NumberOr("taperAngle", 0);
  line.flatLength = scale(fields.NumberOr("flatLength", 0));
  line.flip = fields.FlagOr("flip", false);
  return line;
}

template <typename Piece>
std::vector<Piece> ReadPieces(JsonFields& fields, const std::string& key, const LengthScale& scale,
                              Piece (*read)(JsonFields&, const LengthScale&)) {
  std::vector<Piece> pieces;
  if (!fields.Has(key)) {
    return pieces;
  }
  for (const nlohmann::json& element : fields.Array(key)) {
    JsonFields members(element, fields.Where(key) + "[" + std::to_string(pieces.size()) + "]");
    pieces.push_back(read(members, scale));
    members.Finish();
  }
  return pieces;
}

Tool Custom(JsonFields& fields, const LengthScale& scale) {
  CustomTool tool;
  tool.arcs = ReadPieces<ArcPiece>(fields, "arcs", scale, ReadArc);
  tool.lines = ReadPieces<LinePiece>(fields, "lines", scale, ReadLine);
  if (const std::string fault = FaultOf(tool); !fault.empty()) {
    throw JsonFault(fields.Where(fault));
  }
  return tool;
}

struct ConvexKind {
  std::string_view name;
  ConvexTool (*read)(JsonFields&);
};

constexpr std::array<ConvexKind, 7> kConvexKinds = {{{"convex", Convex},
                                                     {"flat", Flat},
                                                     {"ball", Ball},
                                                     {"bullnose", BullNose},
                                                     {"tapered", Tapered},
                                                     {"chamfer", Chamfer},
                                                     {"drill", Drill}}};

}  // namespace

Tool ReadToolOfKind(JsonFields& fields, const LengthScale& scale) {
  const std::string kind = fields.Text("kind");
  for (const ConvexKind& candidate : kConvexKinds) {
    if (candidate.name != kind) {
      continue;
    }
    const ConvexTool tool = ScaledConvex(candidate.read(fields), scale);
    if (const std::string fault = FaultOf(tool); !fault.empty()) {
      throw JsonFault(fields.Where(fault));
    }
    return tool;
  }
  if (kind == "undercut") {
    return Undercut(fields, scale);
  }
  if (kind == "custom") {
    return Custom(fields, scale);
  }
  throw JsonFault(fields.Where("kind") + " \"" + kind +
                  "\" is none of convex, flat, ball, bullnose, tapered, chamfer, drill, undercut, "
                  "custom");
}

}  // namespace formats

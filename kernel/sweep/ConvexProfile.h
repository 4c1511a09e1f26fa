#pragma once

#include <string>
#include <variant>
#include <vector>

#include "formats/ToolpathRecords.h"
#include "kernel/sweep/ProfilePoint.h"

namespace kernel {

// One stretch of a tool's outline: a straight line or a circular arc. Normals are unit vectors that
// point out of the tool. Walking from `start` to `end` has the tool on the left.
struct ProfilePiece {
  bool isArc = false;
  ProfilePoint start;
  ProfilePoint end;  // the last piece of an outline has end.z (and perhaps end.r) infinite
  ProfilePoint startNormal;
  ProfilePoint endNormal;
  ProfilePoint centre = {};  // of an arc; centre.r may be negative on a bevel
  double radius = 0;         // of an arc, above 0
};

// The outline of a convex tool: pieces that join end to start, from the axis outwards and upwards,
// radius and height never falling, the normals turning from straight down towards straight out. The
// last piece is unbounded, so that every height above 0 meets the tool.
using ConvexProfile = std::vector<ProfilePiece>;

// The outline of a standard convex tool: a lower face from the tip (a disc or a cone), the corner
// arc, the wall (a cone or a cylinder), the bevel and the cylinder above, as far as each is there.
// An upper bevel without an upper edge (taper height 0, or a wall that is a cylinder already) has
// nothing to round and is left out. On parameters that make no solid: one line that names the
// field.
std::variant<ConvexProfile, std::string> BuildConvexProfile(const formats::ConvexTool& parameters);

}  // namespace kernel

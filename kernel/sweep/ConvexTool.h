#pragma once

#include <optional>
#include <string>
#include <variant>

#include "formats/ToolpathRecords.h"
#include "kernel/sweep/ConvexProfile.h"
#include "kernel/sweep/ProfilePoint.h"

namespace kernel {

// A point of the half plane seen from a tool's outline.
struct ProfileNearest {
  double distance = 0;  // below 0 inside the tool
  ProfilePoint normal;  // outward unit normal of the outline at the point nearest to it
};

// A cutter: a convex solid of revolution, its tip at the origin, its axis upwards, unbounded above.
// Lengths in the units of its parameters. Immutable; may be read from any number of threads.
class ConvexTool {
 public:
  // The standard convex tool, or one line that says which parameter makes it no solid.
  static std::variant<ConvexTool, std::string> Make(const formats::ConvexTool& parameters);

  const ConvexProfile& Profile() const { return m_profile; }

  // Of the cylinder above; infinite when the wall never stops widening.
  double WidestRadius() const { return m_widest; }

  // Height above which the outline is one straight line.
  double ProfileTop() const { return m_profile.back().start.z; }

  // Radius of the tool's section at a height; 0 below the tip.
  double RadiusAt(double z) const;

  // Lowest height of the tool at distance r >= 0 from the axis; beyond the widest radius that of
  // the foot of the cylinder.
  double HeightAt(double r) const;

  // How high above the tip the centre of a ball end's sphere stands; none for other tools.
  std::optional<double> BallCentre() const;

  // The smallest radius of curvature of the tool's smooth pieces (corner, bevel, wall where it
  // starts); infinite for a bare cone. Rays much closer than this see the cut surface well.
  double CharacteristicRadius() const;

  // `point` must have r >= 0. On a sharp edge the normal is one between its two faces'.
  ProfileNearest Nearest(const ProfilePoint& point) const;

  // Greatest extent of the part below height `top` along a direction (r >= 0, z) of the half plane.
  double Support(const ProfilePoint& direction, double top) const;

 private:
  explicit ConvexTool(ConvexProfile profile);

  ConvexProfile m_profile;
  double m_widest;
};

}  // namespace kernel

#include "kernel/offset/OffsetPlan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kernel {
namespace {

// Cells of the lattice that the surface runs through, as many as are wanted where nothing calls for
// more, and the most; nodes, at a third of a byte each; facets of rounded pieces.
constexpr double kWantedCells = 60e3;
constexpr double kMostCells = 500e3;
constexpr double kMostNodes = 1.5e9;
constexpr double kMostFacets = 2e6;
constexpr double kMostDegrees = 90;
// A surface of area A runs through about so many times A / h^2 cells.
constexpr double kCellsInArea = 1.5;
// Edges of the mesh are about 1.3 times the spacing.
constexpr double kChordShare = 0.75;
// Of the radius: below this spacing nothing is missed, as the band is wider than a cell.
constexpr double kSafeShare = 0.5;

double AreaOf(const StockMesh& mesh) {
  double twice = 0;
  for (const StockMesh::Facet& facet : mesh.facets) {
    const Vec3& a = mesh.vertices[facet.vertices[0]];
    twice +=
        Length(Cross(mesh.vertices[facet.vertices[1]] - a, mesh.vertices[facet.vertices[2]] - a));
  }
  return twice / 2;
}

// What a ball adds to the surface of a box (the formula of Steiner).
double RoundArea(const Box3& box, double radius) {
  const Vec3 extent = box.high - box.low;
  return 2 * std::numbers::pi * radius * (extent.x + extent.y + extent.z + 2 * radius);
}

// Of the offset: the mesh's own on each side that has one, and what is rounded.
double OffsetArea(const PreparedSurface& surface, double radius) {
  return (surface.isClosed ? 1 : 2) * AreaOf(surface.mesh) + RoundArea(surface.box, radius);
}

double NodesIn(const Box3& box, double spacing) {
  const Vec3 n = (box.high - box.low) / spacing + Vec3{2, 2, 2};
  return n.x * n.y * n.z;
}

}  // namespace

double ChordHeight(double radius, double degrees) {
  const double quarter = degrees * std::numbers::pi / 720;
  // 1 - cos of twice the angle, without losing digits.
  return 2 * radius * std::sin(quarter) * std::sin(quarter);
}

OffsetPlan PlanOffset(const PreparedSurface& surface, double radius, double degrees) {
  const double area = OffsetArea(surface, radius);
  const auto spacingFor = [&](double cells) { return std::sqrt(kCellsInArea * area / cells); };
  OffsetPlan plan;
  plan.tolerance = ChordHeight(radius, degrees);
  const double coarsest = std::min(RoundArea(surface.box, radius) / (kMostFacets * radius),
                                   ChordHeight(radius, kMostDegrees));
  plan.toleranceRaised = plan.tolerance < coarsest;
  if (plan.toleranceRaised) plan.tolerance = coarsest;
  const double chord = 2 * std::sqrt(2 * radius * plan.tolerance);
  plan.spacing = std::max(kChordShare * chord, spacingFor(kWantedCells));
  plan.spacing = std::min(plan.spacing, kSafeShare * radius);
  const Box3 box = surface.box.Grown(radius);
  plan.finestSpacing = spacingFor(kMostCells);
  while (NodesIn(box, plan.finestSpacing) > kMostNodes) plan.finestSpacing *= 1.05;
  plan.spacing = std::max(plan.spacing, plan.finestSpacing);
  return plan;
}

}  // namespace kernel

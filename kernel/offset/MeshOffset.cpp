#include "kernel/offset/MeshOffset.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "kernel/common/RunAside.h"
#include "kernel/offset/OffsetCrossings.h"
#include "kernel/offset/OffsetNodes.h"
#include "kernel/offset/OffsetSolid.h"
#include "kernel/sweep/Contour.h"
#include "kernel/sweep/MergePlanes.h"
#include "kernel/sweep/SettleMesh.h"

namespace kernel {
namespace {

constexpr double kExact = 1e-12;   // of the diagonal
constexpr double kRoundings = 32;  // that a point on the surface may be off
// Splits that a facet of the contour may need, one after the other.
constexpr int kRounds = 10;
// How far the contour is when nodes, crossings and facets are done.
constexpr double kNodesDone = 0.3;
constexpr double kCrossingsDone = 0.6;

double LargestCoordinate(const Box3& box) {
  double largest = box.Diagonal();
  for (int axis = 0; axis < 3; ++axis) {
    largest = std::max({largest, std::abs(box.low[axis]), std::abs(box.high[axis])});
  }
  return largest;
}

class Maker {
 public:
  Maker(const PreparedSurface& surface, OffsetField::Side side, double radius,
        const OffsetPlan& plan, StageProgress& progress)
      : m_side(side),
        m_box(side == OffsetField::Side::kInside ? surface.box : surface.box.Grown(radius)),
        m_plan(plan),
        m_progress(progress),
        m_lattice(m_box, plan.spacing) {
    m_progress.Begin("Initialising surface");
    RunAside(m_progress, [&](const Tell& tell) { m_tree.emplace(surface.mesh, tell); });
    m_progress.End();
    m_field.emplace(*m_tree, side, radius, LargestCoordinate(surface.box.Grown(radius)));
    m_makers.emplace(*m_field, surface.mesh);
  }

  CutMesh Make() {
    CutMesh mesh = Merge(Settle(Contour()));
    // The mesh so far is that of what is left, which lies outside of a grown surface.
    if (m_side != OffsetField::Side::kInside) {
      for (CutMesh::Facet& facet : mesh.facets) std::swap(facet.vertices[1], facet.vertices[2]);
    }
    return mesh;
  }

 private:
  // Runs work(tell) on a thread of its own as a stage.
  template <typename Work>
  void RunStage(const char* text, const Work& work) {
    m_progress.Begin(text);
    RunAside(m_progress, work);
    m_progress.End();
  }

  CutMesh Contour() {
    CutMesh mesh;
    RunStage("Offsetting (phase 2)... 1", [&](const Tell& tell) {
      const auto from = [&](double begin, double end) {
        return [&tell, begin, end](double share) { tell(begin + (end - begin) * share); };
      };
      const SurfaceCells cells(NodesOf(*m_field, m_lattice, from(0, kNodesDone)));
      const OffsetCrossings crossings(*m_field, m_lattice, cells, from(kNodesDone, kCrossingsDone));
      mesh = ContourCells(crossings, cells, *m_makers, from(kCrossingsDone, 1));
    });
    return mesh;
  }

  HalfEdgeMesh Settle(CutMesh contour) {
    std::optional<HalfEdgeMesh> mesh;
    Unsettled unsettled;
    RunStage("Optimising surface", [&](const Tell& tell) {
      const OffsetSolid solid(*m_makers, m_lattice, contour.vertices);
      const double exact = std::max(kExact * m_box.Diagonal(), kRoundings * m_field->Rounding());
      const SettleLimits limits{m_plan.tolerance, exact, m_plan.spacing, kRounds};
      mesh.emplace(std::move(contour));
      unsettled = SettleMesh(*mesh, SurfaceSurvey(*mesh, solid, limits), limits, tell);
    });
    if (unsettled.places > 0) WarnOf(unsettled);
    return std::move(*mesh);
  }

  void WarnOf(const Unsettled& unsettled) {
    char text[120];
    std::snprintf(text, sizeof text, "the surface is up to %g off (in %.0f places)",
                  unsettled.farthest, static_cast<double>(unsettled.places));
    m_progress.Warn(text);
  }

  CutMesh Merge(HalfEdgeMesh mesh) {
    MergedPlanes merged;
    RunStage("Cleaning surface", [&](const Tell& tell) {
      merged = MergePlanes(std::move(mesh), m_box.Diagonal(), tell);
    });
    if (merged.slivers > 0) {
      m_progress.Warn(std::to_string(merged.slivers) + " facets without area could not be removed");
    }
    return std::move(merged.mesh);
  }

  OffsetField::Side m_side;
  Box3 m_box;
  OffsetPlan m_plan;
  StageProgress& m_progress;
  DexelLattice m_lattice;
  std::optional<StockTree> m_tree;
  std::optional<OffsetField> m_field;
  std::optional<OffsetMakers> m_makers;
};

}  // namespace

CutMesh MeshOffset(const PreparedSurface& surface, OffsetField::Side side, double radius,
                   const OffsetPlan& plan, StageProgress& progress) {
  return Maker(surface, side, radius, plan, progress).Make();
}

}  // namespace kernel

#include "kernel/offset/MeshOffset.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "kernel/common/FigureText.h"
#include "kernel/common/RunAside.h"
#include "kernel/offset/FindMissed.h"
#include "kernel/offset/MendOffset.h"
#include "kernel/offset/OffsetCrossings.h"
#include "kernel/offset/OffsetNodes.h"
#include "kernel/offset/PlaceOverVertices.h"
#include "kernel/offset/RefineOffset.h"
#include "kernel/offset/SettleVertices.h"
#include "kernel/sweep/Contour.h"
#include "kernel/sweep/MergePlanes.h"

namespace kernel {
namespace {

constexpr double kExact = 1e-12;   // of the diagonal
constexpr double kRoundings = 32;  // that a point on the surface may be off
constexpr double kReach = 0.75;    // of the spacing, that a vertex may be moved
// Of the tolerance and the spacing: a point of the exact surface that is further from the mesh than
// both has been missed.
constexpr double kMissedTolerances = 2;
constexpr double kMissedSpacings = 0.5;
// How far the contour is when nodes, crossings and facets are done.
constexpr double kNodesDone = 0.3;
constexpr double kCrossingsDone = 0.6;
// Of refining: what has not come to rest by then never does.
constexpr int kMostRounds = 16;
// Of refining when vertices are over those of the surface and when all are in place, of cleaning
// when what is left has been mended.
constexpr double kPlaced = 0.1;
constexpr double kSettled = 0.3;
constexpr double kMended = 0.8;

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
        m_progress(progress) {
    RunStage("Initialising surface", [&](const Tell& tell) { m_tree.emplace(surface.mesh, tell); });
    m_field.emplace(*m_tree, side, radius, LargestCoordinate(surface.box.Grown(radius)));
    m_makers.emplace(*m_field, surface.mesh);
  }

  CutMesh Make() {
    HalfEdgeMesh refined = AtSpacing(m_plan.spacing);
    Missed missed = LookForMissed(refined, m_plan.spacing);
    for (double spacing = m_plan.spacing / 2; missed.points > 0 && spacing >= m_plan.finestSpacing;
         spacing /= 2) {
      refined = AtSpacing(spacing);
      missed = LookForMissed(refined, spacing);
    }
    CutMesh mesh = Finish(std::move(refined), std::move(missed.uncovered));
    if (m_left.count > 0) WarnOf(m_left);
    if (missed.points > 0) WarnOf(missed);
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

  HalfEdgeMesh AtSpacing(double spacing) {
    const DexelLattice lattice(m_box, spacing);
    return Refine(Contour(lattice), spacing);
  }

  CutMesh Contour(const DexelLattice& lattice) {
    const std::string text = "Offsetting (phase 2)... " + std::to_string(++m_attempts);
    CutMesh mesh;
    RunStage(text.c_str(), [&](const Tell& tell) {
      const auto from = [&](double begin, double end) {
        return [&tell, begin, end](double share) { tell(begin + (end - begin) * share); };
      };
      const SurfaceCells cells(NodesOf(*m_field, lattice, from(0, kNodesDone)));
      const OffsetCrossings crossings(*m_field, lattice, cells, from(kNodesDone, kCrossingsDone));
      mesh = ContourCells(crossings, cells, *m_makers, from(kCrossingsDone, 1));
    });
    return mesh;
  }

  HalfEdgeMesh Refine(CutMesh contour, double spacing) {
    HalfEdgeMesh mesh(std::move(contour));
    const double exact = std::max(kExact * m_box.Diagonal(), kRoundings * m_field->Rounding());
    m_limits = {m_plan.tolerance, exact, kReach * spacing};
    RunStage("Optimising surface", [&](const Tell& tell) {
      PlaceOverVertices(mesh, *m_makers, m_limits, [&](double share) { tell(kPlaced * share); });
      m_stuck = SettleVertices(mesh, *m_makers, m_limits,
                               [&](double share) { tell(kPlaced + (kSettled - kPlaced) * share); });
      m_unfit = RefineOffset(mesh, *m_makers, m_limits, mesh.LiveFacets(), kMostRounds,
                             [&](double share) { tell(kSettled + (1 - kSettled) * share); });
    });
    return mesh;
  }

  CutMesh Finish(HalfEdgeMesh mesh, std::vector<UncoveredPoint> uncovered) {
    MergedPlanes merged;
    RunStage("Cleaning surface", [&](const Tell& tell) {
      m_left = MendOffset(mesh, *m_makers, m_limits, Unfit(mesh), std::move(uncovered),
                          [&](double share) { tell(kMended * share); });
      merged = MergePlanes(std::move(mesh), m_box.Diagonal(),
                           [&](double share) { tell(kMended + (1 - kMended) * share); });
    });
    if (merged.slivers > 0) {
      m_progress.Warn(std::to_string(merged.slivers) + " facets without area could not be removed");
    }
    return std::move(merged.mesh);
  }

  // Facets that are off, and those around vertices that are.
  std::vector<HalfEdgeMesh::Index> Unfit(const HalfEdgeMesh& mesh) {
    std::vector<HalfEdgeMesh::Index> unfit = std::move(m_unfit);
    for (const HalfEdgeMesh::Index vertex : m_stuck) {
      const HalfEdgeMesh::Index first = mesh.Out(vertex);
      if (first == HalfEdgeMesh::kNone) continue;
      HalfEdgeMesh::Index half = first;
      do {
        unfit.push_back(half / 3);
        half = mesh.Around(half);
      } while (half != first);
    }
    return unfit;
  }

  Missed LookForMissed(const HalfEdgeMesh& mesh, double spacing) {
    Missed missed;
    RunStage("Scanning surface", [&](const Tell& tell) {
      const double distance =
          std::max(kMissedTolerances * m_plan.tolerance, kMissedSpacings * spacing);
      missed = FindMissed(*m_makers, mesh, {m_plan.tolerance, distance}, tell);
    });
    return missed;
  }

  void WarnOf(const OffPlaces& left) {
    m_progress.Warn("the surface is up to " + FigureText(left.farthest) + " off (in " +
                    std::to_string(left.count) + " places)");
  }

  void WarnOf(const Missed& missed) {
    m_progress.Warn("walls or gaps thinner than what can be kept are left out (over " +
                    std::to_string(missed.points) + " facets)");
  }

  OffsetField::Side m_side;
  Box3 m_box;
  OffsetPlan m_plan;
  StageProgress& m_progress;
  int m_attempts = 0;
  std::optional<StockTree> m_tree;
  std::optional<OffsetField> m_field;
  std::optional<OffsetMakers> m_makers;
  OffsetLimits m_limits;
  std::vector<HalfEdgeMesh::Index> m_stuck, m_unfit;  // vertices and facets
  OffPlaces m_left;
};

}  // namespace

CutMesh MeshOffset(const PreparedSurface& surface, OffsetField::Side side, double radius,
                   const OffsetPlan& plan, StageProgress& progress) {
  return Maker(surface, side, radius, plan, progress).Make();
}

}  // namespace kernel

#include "kernel/heal/MendSurface.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "kernel/common/RunAside.h"
#include "kernel/heal/CleanFacets.h"
#include "kernel/heal/CloseGaps.h"
#include "kernel/heal/FillHoles.h"
#include "kernel/heal/HangingSheets.h"
#include "kernel/heal/InwardBodies.h"
#include "kernel/heal/LinkFacets.h"
#include "kernel/heal/MeasureBodies.h"
#include "kernel/heal/NumberFans.h"
#include "kernel/heal/RemoveCrossings.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;

class Mender {
 public:
  Mender(SurfaceMesh mesh, double tolerance, StageProgress& progress)
      : m_tolerance(tolerance),
        m_least(kLeastHeight * mesh.Bounds().Diagonal()),
        m_progress(progress) {
    m_linked.mesh = std::move(mesh);
  }

  SurfaceMesh Run() {
    Stitch();
    FillAndPart();
    WarnOfCount(RemoveCrossings(m_linked, m_tolerance, m_least, m_progress),
                "pairs of facets that cross could not be parted");
    WarnOfOpenEdges();
    return std::move(m_linked.mesh);
  }

 private:
  // Runs one stage's work aside.
  template <class Work>
  void Stage(const char* text, const Work& work) {
    m_progress.Begin(text);
    RunAside(m_progress, work);
    m_progress.End();
  }

  void WarnOfCount(std::size_t count, const std::string& what) {
    if (count > 0) m_progress.Warn(std::to_string(count) + " " + what);
  }

  void Stitch() {
    Stage("Stitching surface", [&](const Tell& tell) {
      SurfaceMesh& mesh = m_linked.mesh;
      double done = 0;
      const auto check = [&] { tell(done); };
      std::optional<MeshEdges> unslivered = WithoutSlivers(mesh, check);
      MeshEdges edges = unslivered ? std::move(*unslivered) : MeshEdges(mesh);
      done = 0.3;
      edges = CloseGaps(mesh, std::move(edges), {m_tolerance, {}, check}, m_least);
      done = 0.6;
      if (auto closed = WithoutSlivers(mesh, check)) edges = std::move(*closed);
      if (RemoveDuplicateFacets(mesh, edges) > 0) edges = MeshEdges(mesh);
      tell(0.8);
      m_linked = LinkFacets(std::move(mesh), edges);
    });
  }

  // Removes slivers and closes what they leave, so that the tolerance does not take hold of that.
  // The edges afterwards; nothing when there was no sliver.
  std::optional<MeshEdges> WithoutSlivers(SurfaceMesh& mesh,
                                          const std::function<void()>& check) const {
    std::vector<bool> corners = RemoveSliverFacets(mesh, m_least);
    if (corners.empty()) return std::nullopt;
    return CloseGaps(mesh, MeshEdges(mesh), {m_least, std::move(corners), check}, m_least);
  }

  void FillAndPart() {
    FilledHoles holes;
    std::size_t hanging = 0, turned = 0;
    Stage("Generating facets in holes", [&](const Tell& tell) {
      holes = FillHoles(m_linked, m_least, tell);
      hanging = RemoveHangingSheets(m_linked);
      turned = TurnOutwards();
      NumberFans(m_linked);
    });
    WarnOfCount(hanging, "facets that hang on a closed surface have been removed");
    WarnOfCount(turned, "bodies faced inwards and have been turned");
  }

  std::size_t TurnOutwards() {
    const std::vector<Index> bodies = m_linked.Bodies();
    const std::vector<bool> inward =
        InwardBodies(m_linked, bodies, MeasureBodies(m_linked, bodies));
    const auto count = std::count(inward.begin(), inward.end(), true);
    if (count == 0) return 0;
    std::vector<bool> turned(bodies.size());
    for (std::size_t f = 0; f < turned.size(); ++f) turned[f] = inward[bodies[f]];
    m_linked.TurnOver(turned);
    return static_cast<std::size_t>(count);
  }

  void WarnOfOpenEdges() {
    const auto open = std::count(m_linked.twin.begin(), m_linked.twin.end(), SurfaceMesh::kNone);
    WarnOfCount(static_cast<std::size_t>(open), "open edges could not be closed");
  }

  const double m_tolerance, m_least;
  StageProgress& m_progress;
  LinkedMesh m_linked;
};

}  // namespace

SurfaceMesh MendSurface(SurfaceMesh mesh, double tolerance, StageProgress& progress) {
  return Mender(std::move(mesh), tolerance, progress).Run();
}

}  // namespace kernel

#include "kernel/heal/FindCrossings.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>

#include "kernel/common/Workers.h"
#include "kernel/heal/ExactPredicates.h"
#include "kernel/heal/FacetTree.h"

namespace kernel {
namespace {

using Index = SurfaceMesh::Index;
using Facet = SurfaceMesh::Facet;

constexpr std::size_t kGroupsInTask = 512;

// Far above what rounding does to a product of three edge vectors.
constexpr double kClear = 1e-10;

int SharedVertices(const Facet& a, const Facet& b) {
  return static_cast<int>(std::count_if(b.vertices.begin(), b.vertices.end(),
                                        [&](Index vertex) { return a.Has(vertex); }));
}

// Whether a plane through a side of `a`, upright on `a`, has clearly all of `b` on its other side,
// but for the corners that `b` shares with that side. True for nearly all neighbours in a surface;
// false does not mean anything.
bool IsClearlyBeside(const SurfaceMesh& mesh, const Facet& a, const Facet& b) {
  const Vec3 normal = mesh.Normal(a);
  for (std::size_t i = 0; i < 3; ++i) {
    const Index from = a.vertices[i], to = a.vertices[(i + 1) % 3];
    const Vec3& origin = mesh.vertices[from];
    const Vec3 outward = Cross(mesh.vertices[to] - origin, normal);
    if (Dot(outward, mesh.Corner(a, (i + 2) % 3) - origin) >= 0) continue;
    const double lengthSquared = LengthSquared(outward);
    bool beside = true;
    for (std::size_t k = 0; k < 3 && beside; ++k) {
      if (b.vertices[k] == from || b.vertices[k] == to) continue;
      const Vec3 way = mesh.Corner(b, k) - origin;
      const double beyond = Dot(outward, way);
      beside = beyond > 0 && beyond * beyond > kClear * kClear * lengthSquared * LengthSquared(way);
    }
    if (beside && lengthSquared > 0) return true;
  }
  return false;
}

bool FacetsCross(const SurfaceMesh& mesh, const Facet& a, const Facet& b) {
  if (IsClearlyBeside(mesh, a, b) || IsClearlyBeside(mesh, b, a)) return false;
  const auto triangle = [&](const Facet& f) {
    return Triangle{mesh.Corner(f, 0), mesh.Corner(f, 1), mesh.Corner(f, 2)};
  };
  switch (OverlapOf(triangle(a), triangle(b))) {
    case Overlap::kNone:
      return false;
    case Overlap::kFacingAway:
      return SharedVertices(a, b) >= 2;
    case Overlap::kCrossing:
    case Overlap::kSameFacing:
      break;
  }
  return true;
}

}  // namespace

CrossingPairs FindCrossings(const SurfaceMesh& mesh, bool firstOnly, const Tell& advance) {
  std::optional<FacetTree> tree;
  RunAside([&](double) { advance(0); }, [&](const Tell&) { tree.emplace(mesh); });
  const std::size_t tasks = (tree->GroupCount() + kGroupsInTask - 1) / kGroupsInTask;
  std::mutex mutex;
  std::atomic<bool> found{false};
  CrossingPairs crossings;
  const auto search = [&](std::size_t task) {
    CrossingPairs mine;
    const std::size_t end = std::min((task + 1) * kGroupsInTask, tree->GroupCount());
    for (std::size_t group = task * kGroupsInTask; group < end; ++group) {
      tree->ForEachPair(group, [&](Index f, Index g) {
        if (firstOnly && found) return false;
        if (!FacetsCross(mesh, mesh.facets[f], mesh.facets[g])) return true;
        mine.push_back(std::minmax(f, g));
        found = true;
        return true;
      });
    }
    const std::lock_guard lock(mutex);
    crossings.insert(crossings.end(), mine.begin(), mine.end());
  };
  RunTasks(tasks, search, [&](std::size_t done) {
    advance(static_cast<double>(done) / static_cast<double>(tasks));
  });
  std::sort(crossings.begin(), crossings.end());
  return crossings;
}

}  // namespace kernel

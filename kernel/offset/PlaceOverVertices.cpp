#include "kernel/offset/PlaceOverVertices.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "kernel/offset/EachOnOffset.h"
#include "kernel/sweep/SoundFacet.h"

namespace kernel {
namespace {

using Index = HalfEdgeMesh::Index;
using Watch = std::function<void(double)>;

// In tolerances: a place over a vertex is no further off the planes of the facets around that.
constexpr double kFlat = 2;
constexpr int kMostSteps = 6;
constexpr double kLeastCosine = 0.5;  // of the way up from a vertex to the slope of the distance
// A vertex may be in the way of another one's, and move itself.
constexpr int kMostPasses = 3;
// The share of the work that is done when places have been found.
constexpr double kPlacesDone = 0.5;

// Where the exact surface lies over the vertices of the field's mesh, by vertex, then by side.
class Places {
 public:
  Places(const OffsetMakers& makers, const OffsetLimits& limits)
      : m_field(makers.Field()),
        m_surface(makers.Mesh()),
        m_limits(limits),
        m_sides(m_field.SideNormals(0).size()),
        m_places(m_sides * m_surface.vertices.size()) {}

  void Find(const OffsetMakers& makers, const Watch& watch) {
    std::vector<Over> overs = Overs();
    ForEachInChunks(overs.size(), makers, watch, [&](const LocalOffset&, std::size_t vertex) {
      const Vec3 up = Normalised(overs[vertex].normals);
      if (up == Vec3{}) return;
      for (std::size_t side = 0; side < m_sides; ++side) {
        m_places[m_sides * vertex + side] =
            StraightUp(m_surface.vertices[vertex], side == 0 ? up : -up, overs[vertex].slot);
      }
    });
    for (std::uint32_t slot = 0; slot < m_field.SlotCount(); ++slot) DropOff(slot);
  }

  std::size_t Count() const { return m_places.size(); }
  const Vec3& At(std::size_t place) const { return *m_places[place]; }

  // The nearest one over a corner of a slot's facet, if nearer than `reach`, and how far it is.
  std::optional<std::size_t> NearestOver(std::uint32_t slot, const Vec3& point,
                                         double& reach) const {
    std::optional<std::size_t> nearest;
    for (const std::uint32_t vertex : VerticesOf(slot)) {
      for (std::size_t place = m_sides * vertex; place < m_sides * (vertex + 1); ++place) {
        if (!m_places[place]) continue;
        const double distance = Length(*m_places[place] - point);
        if (distance >= reach) continue;
        reach = distance;
        nearest = place;
      }
    }
    return nearest;
  }

 private:
  struct Over {
    Vec3 normals;  // of the facets around a vertex, weighted
    std::uint32_t slot = 0;
  };

  const std::array<std::uint32_t, 3>& VerticesOf(std::uint32_t slot) const {
    return m_surface.facets[m_field.FacetOf(slot)].vertices;
  }

  std::vector<Over> Overs() const {
    std::vector<Over> overs(m_surface.vertices.size());
    for (std::uint32_t slot = 0; slot < m_field.SlotCount(); ++slot) {
      const Vec3 normal = m_field.SideNormals(slot)[0];
      const auto& vertices = VerticesOf(slot);
      for (std::size_t i = 0; i < 3; ++i) {
        const Vec3& at = m_surface.vertices[vertices[i]];
        const Vec3 a = Normalised(m_surface.vertices[vertices[(i + 1) % 3]] - at);
        const Vec3 b = Normalised(m_surface.vertices[vertices[(i + 2) % 3]] - at);
        // By the corner's angle: it makes no difference then how the facets are split.
        overs[vertices[i]].normals += normal * std::acos(std::clamp(Dot(a, b), -1.0, 1.0));
        overs[vertices[i]].slot = slot;
      }
    }
    return overs;
  }

  std::optional<Vec3> StraightUp(const Vec3& vertex, const Vec3& up, std::uint32_t slot) const {
    double height = m_field.Radius();
    for (int step = 0; step < kMostSteps; ++step) {
      const Vec3 point = vertex + up * height;
      const OffsetField::Off off = m_field.At(point, slot);
      if (std::abs(off.distance) <= m_limits.exact) return point;
      if (std::abs(off.distance) > kFlat * m_limits.tolerance) break;
      slot = off.slot;
      const double cosine = Dot(m_field.SlopeOf(slot, point).gradient, up);
      if (cosine < kLeastCosine) break;
      height += off.distance / cosine;
    }
    return std::nullopt;
  }

  // Drops the places over a facet's corners that are off its plane: there the surface is rounded,
  // or sharp, and has no one place that suits.
  void DropOff(std::uint32_t slot) {
    const std::vector<Vec3> normals = m_field.SideNormals(slot);
    for (const std::uint32_t vertex : VerticesOf(slot)) {
      for (std::size_t side = 0; side < m_sides; ++side) {
        std::optional<Vec3>& place = m_places[m_sides * vertex + side];
        if (!place) continue;
        const double height = Dot(*place - m_surface.vertices[vertex], normals[side]);
        const bool suits = std::abs(height - m_field.Radius()) <= kFlat * m_limits.tolerance;
        if (!suits) place.reset();
      }
    }
  }

  const OffsetField& m_field;
  const StockMesh& m_surface;
  OffsetLimits m_limits;
  std::size_t m_sides;
  std::vector<std::optional<Vec3>> m_places;
};

// A vertex of the contour and the place that it is nearest to.
struct Claim {
  std::size_t place;
  Index vertex;
  double distance;
};

class Placer {
 public:
  Placer(HalfEdgeMesh& mesh, const Places& places)
      : m_mesh(mesh), m_places(places), m_owner(places.Count(), HalfEdgeMesh::kNone) {}

  // The nearest vertex that may move to a place gets it.
  void Settle(std::vector<Claim> claims) {
    std::sort(claims.begin(), claims.end(), [](const Claim& a, const Claim& b) {
      if (a.place != b.place) return a.place < b.place;
      return a.distance != b.distance ? a.distance < b.distance : a.vertex < b.vertex;
    });
    for (int pass = 0; pass < kMostPasses; ++pass) {
      std::erase_if(claims, [&](const Claim& claim) { return Occupy(claim); });
    }
    for (const Claim& claim : claims) Join(claim);
  }

 private:
  bool Occupy(const Claim& claim) {
    Index& owner = m_owner[claim.place];
    const Vec3& place = m_places.At(claim.place);
    if (owner != HalfEdgeMesh::kNone || !MayMove(m_mesh, claim.vertex, place)) return false;
    m_mesh.MoveTo(claim.vertex, place);
    owner = claim.vertex;
    return true;
  }

  // Lets a vertex that came too late become one with the place's owner, if that is its neighbour.
  void Join(const Claim& claim) {
    const Index owner = m_owner[claim.place];
    const Index first = m_mesh.Out(claim.vertex);
    if (owner == HalfEdgeMesh::kNone || first == HalfEdgeMesh::kNone) return;
    Index half = first;
    do {
      if (m_mesh.Target(half) == owner) {
        const bool mayJoin =
            m_mesh.CanCollapse(half) && MayMove(m_mesh, claim.vertex, m_mesh.At(owner), owner);
        if (mayJoin) m_mesh.Collapse(half);
        return;
      }
      half = m_mesh.Around(half);
    } while (half != first);
  }

  HalfEdgeMesh& m_mesh;
  const Places& m_places;
  std::vector<Index> m_owner;  // by place
};

std::vector<Claim> ClaimsOf(const HalfEdgeMesh& mesh, const OffsetMakers& makers,
                            const Places& places, double reach, const Watch& watch) {
  std::vector<Claim> claims(mesh.VertexCount(), Claim{0, HalfEdgeMesh::kNone, reach});
  ForEachInChunks(claims.size(), makers, watch, [&](const LocalOffset& solid, std::size_t i) {
    const auto vertex = static_cast<Index>(i);
    if (mesh.Out(vertex) == HalfEdgeMesh::kNone) return;
    const Vec3& at = mesh.At(vertex);
    const std::uint32_t slot = solid.HowFarOff(at).maker.Number();
    const std::optional<std::size_t> place = places.NearestOver(slot, at, claims[i].distance);
    if (place) claims[i] = {*place, vertex, claims[i].distance};
  });
  std::erase_if(claims, [](const Claim& claim) { return claim.vertex == HalfEdgeMesh::kNone; });
  return claims;
}

}  // namespace

void PlaceOverVertices(HalfEdgeMesh& mesh, const OffsetMakers& makers, const OffsetLimits& limits,
                       const Watch& watch) {
  Places places(makers, limits);
  places.Find(makers, [&](double share) { watch(kPlacesDone * share); });
  Placer(mesh, places).Settle(ClaimsOf(mesh, makers, places, limits.reach, [&](double share) {
    watch(kPlacesDone + (1 - kPlacesDone) * share);
  }));
}

}  // namespace kernel

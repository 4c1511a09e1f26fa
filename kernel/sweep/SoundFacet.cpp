#include "kernel/sweep/SoundFacet.h"

#include <algorithm>

namespace kernel {
namespace {

constexpr double kLeastShape = 1e-3;  // height over longest edge

}  // namespace

bool IsSoundFacet(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& before) {
  const Vec3 normal = Cross(b - a, c - a);
  const double longest =
      std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
  return Dot(normal, before) > 0 && Length(normal) > kLeastShape * longest;
}

bool MayMove(const HalfEdgeMesh& mesh, HalfEdgeMesh::Index vertex, const Vec3& to,
             HalfEdgeMesh::Index merged) {
  const Vec3& from = mesh.At(vertex);
  HalfEdgeMesh::Index half = mesh.Out(vertex);
  do {
    const HalfEdgeMesh::Index next = mesh.Target(half);
    const HalfEdgeMesh::Index last = mesh.Target(HalfEdgeMesh::Next(half));
    const Vec3& a = mesh.At(next);
    const Vec3& b = mesh.At(last);
    const bool stays = next != merged && last != merged;
    if (stays && !IsSoundFacet(to, a, b, Cross(a - from, b - from))) return false;
    half = mesh.Around(half);
  } while (half != mesh.Out(vertex));
  return true;
}

bool MaySplitSide(const HalfEdgeMesh& mesh, HalfEdgeMesh::Index half, const Vec3& at) {
  const Vec3& from = mesh.At(mesh.Origin(half));
  const Vec3& to = mesh.At(mesh.Target(half));
  const Vec3& left = mesh.At(mesh.Target(HalfEdgeMesh::Next(half)));
  const Vec3 before = Cross(to - from, left - from);
  return IsSoundFacet(from, at, left, before) && IsSoundFacet(at, to, left, before);
}

}  // namespace kernel

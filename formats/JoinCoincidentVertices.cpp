#include <algorithm>
#include <bit>
#include <numeric>

#include "formats/MeshMeasures.h"

namespace formats {
namespace {

// splitmix64's finishing step (S. Vigna, public domain): spreads neighbouring bit patterns.
std::uint64_t Mixed(std::uint64_t x) {
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9U;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebU;
  return x ^ (x >> 31);
}

std::size_t Hash(const std::array<double, 3>& vertex) {
  std::uint64_t hash = 0;
  // Adding 0 turns -0 into 0, which it must share a bucket with.
  for (const double x : vertex) hash = Mixed(hash + std::bit_cast<std::uint64_t>(x + 0.0));
  return static_cast<std::size_t>(hash);
}

}  // namespace

std::size_t JoinCoincidentVertices(Mesh& mesh) {
  constexpr std::int32_t none = -1;
  const std::size_t count = mesh.vertices.size();
  // Open addressing; only looked up, never walked, so its order does not show in the result.
  std::vector<std::int32_t> table(std::bit_ceil(2 * count + 1), none);
  const std::size_t mask = table.size() - 1;
  std::vector<std::int32_t> newNumber(count);
  std::int32_t kept = 0;
  for (std::size_t v = 0; v < count; ++v) {
    // Never found again, and a table full of them would have to be searched to its end each time.
    if (mesh.vertices[v] != mesh.vertices[v]) {
      mesh.vertices[static_cast<std::size_t>(kept)] = mesh.vertices[v];
      newNumber[v] = kept++;
      continue;
    }
    std::size_t slot = Hash(mesh.vertices[v]) & mask;
    while (table[slot] != none &&
           mesh.vertices[static_cast<std::size_t>(table[slot])] != mesh.vertices[v]) {
      slot = (slot + 1) & mask;
    }
    if (table[slot] == none) {
      mesh.vertices[static_cast<std::size_t>(kept)] = mesh.vertices[v];
      table[slot] = kept++;
    }
    newNumber[v] = table[slot];
  }
  mesh.vertices.resize(static_cast<std::size_t>(kept));
  for (Facet& facet : mesh.facets) {
    for (std::int32_t& vertex : facet.vertices) {
      vertex = newNumber[static_cast<std::size_t>(vertex)];
    }
  }
  return count - static_cast<std::size_t>(kept);
}

}  // namespace formats

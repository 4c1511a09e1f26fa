#include "Solids.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "support/geometry/MeshChecks.h"

namespace compare_test {

formats::Mesh Block() { return support::Box({0, 0, 0}, {100, 80, 30}, 5); }

formats::Mesh PittedBlock(double width, double depth) {
  formats::Mesh block = Block();
  const double x = 50 - width / 2, y = 40 - width / 2, z = 30 - depth;
  for (const double height : {30.0, z}) {
    block.vertices.push_back({x, y, height});
    block.vertices.push_back({x + width, y, height});
    block.vertices.push_back({x + width, y + width, height});
    block.vertices.push_back({x, y + width, height});
  }
  // The box's upper corners in the same order: 4, 5, 7, 6; the pit's rim 8 to 11, its floor 12 on.
  std::erase_if(block.facets, [](const formats::Facet& facet) {
    return facet.vertices == std::array<std::int32_t, 3>{4, 5, 7} ||
           facet.vertices == std::array<std::int32_t, 3>{4, 7, 6};
  });
  const std::int32_t outer[] = {4, 5, 7, 6};
  for (std::int32_t i = 0; i < 4; ++i) {
    const std::int32_t next = (i + 1) % 4;
    const std::int32_t a = outer[i], b = outer[next], c = 8 + next, d = 8 + i;
    block.facets.push_back({{a, b, c}, 5});
    block.facets.push_back({{a, c, d}, 5});
    block.facets.push_back({{d, c, c + 4}, 5});
    block.facets.push_back({{d, c + 4, d + 4}, 5});
  }
  block.facets.push_back({{12, 13, 14}, 5});
  block.facets.push_back({{12, 14, 15}, 5});
  return block;
}

formats::Mesh Torus(int round, int across) {
  formats::Mesh mesh;
  for (int i = 0; i < round; ++i) {
    const double u = 2 * std::numbers::pi * i / round;
    for (int j = 0; j < across; ++j) {
      const double v = 2 * std::numbers::pi * j / across;
      const double r = 10 + 4 * std::cos(v);
      mesh.vertices.push_back({r * std::cos(u), r * std::sin(u), 4 * std::sin(v)});
    }
  }
  const auto at = [&](int i, int j) { return i % round * across + j % across; };
  for (int i = 0; i < round; ++i) {
    for (int j = 0; j < across; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 2});
    }
  }
  return mesh;
}

formats::Mesh Wedge(double halfWidth) {
  formats::Mesh mesh;
  for (const double z : {0.0, 5.0}) {
    mesh.vertices.push_back({0, 0, z});
    mesh.vertices.push_back({10, -halfWidth, z});
    mesh.vertices.push_back({10, halfWidth, z});
  }
  mesh.facets = {{{0, 2, 1}, 1}, {{3, 4, 5}, 1}, {{0, 1, 4}, 1}, {{0, 4, 3}, 1},
                 {{1, 2, 5}, 1}, {{1, 5, 4}, 1}, {{2, 0, 3}, 1}, {{2, 3, 5}, 1}};
  return mesh;
}

formats::Mesh Spike(double halfWidth) {
  const double w = halfWidth;
  formats::Mesh mesh;
  mesh.vertices = {{{-w, -w, 0}}, {{w, -w, 0}}, {{w, w, 0}}, {{-w, w, 0}}, {{0, 0, 10}}};
  mesh.facets = {{{0, 2, 1}, 1}, {{0, 3, 2}, 1}, {{0, 1, 4}, 1},
                 {{1, 2, 4}, 1}, {{2, 3, 4}, 1}, {{3, 0, 4}, 1}};
  return mesh;
}

void Add(formats::Mesh& mesh, const formats::Mesh& other) {
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  mesh.vertices.insert(mesh.vertices.end(), other.vertices.begin(), other.vertices.end());
  for (formats::Facet facet : other.facets) {
    for (std::int32_t& vertex : facet.vertices) vertex += first;
    mesh.facets.push_back(facet);
  }
}

formats::Mesh Reversed(formats::Mesh mesh) {
  for (formats::Facet& facet : mesh.facets) std::swap(facet.vertices[1], facet.vertices[2]);
  return mesh;
}

formats::Mesh Moved(formats::Mesh mesh, double factor, const support::Point& by) {
  for (auto& vertex : mesh.vertices) {
    for (std::size_t i = 0; i < 3; ++i) vertex[i] = factor * vertex[i] + by[i];
  }
  return mesh;
}

}  // namespace compare_test

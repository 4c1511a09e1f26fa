#include "OutlineShapes.h"

#include <cmath>
#include <functional>
#include <numbers>
#include <random>

namespace {

// Fans around the poles, quadrilaterals between the rings.
formats::Mesh Globe(int rings, int round,
                    const std::function<std::array<double, 3>(double, double)>& at) {
  formats::Mesh mesh;
  mesh.vertices.push_back(at(0, 0));
  for (int i = 1; i < rings; ++i) {
    for (int j = 0; j < round; ++j) {
      mesh.vertices.push_back(at(std::numbers::pi * i / rings, 2 * std::numbers::pi * j / round));
    }
  }
  mesh.vertices.push_back(at(std::numbers::pi, 0));
  const auto number = [&](int i, int j) { return 1 + (i - 1) * round + j % round; };
  const auto last = static_cast<std::int32_t>(mesh.vertices.size()) - 1;
  for (int j = 0; j < round; ++j) {
    mesh.facets.push_back({{0, number(1, j), number(1, j + 1)}, 1});
    for (int i = 1; i + 1 < rings; ++i) {
      mesh.facets.push_back({{number(i, j), number(i + 1, j), number(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{number(i, j), number(i + 1, j + 1), number(i, j + 1)}, 1});
    }
    mesh.facets.push_back({{number(rings - 1, j), last, number(rings - 1, j + 1)}, 1});
  }
  return mesh;
}

}  // namespace

formats::Mesh Blob(int grid) {
  return Globe(grid, grid, [](double theta, double phi) -> std::array<double, 3> {
    const double r = 50 * (1 + 0.2 * std::sin(5 * theta) * std::sin(4 * phi));
    return {r * std::sin(theta) * std::cos(phi), r * std::sin(theta) * std::sin(phi),
            r * std::cos(theta)};
  });
}

formats::Mesh TurnedBall(int round, double jitter) {
  formats::Mesh mesh =
      Globe(round / 2, round, [](double theta, double phi) -> std::array<double, 3> {
        return {-10 * std::cos(theta), 10 * std::sin(theta) * std::sin(phi),
                10 * std::sin(theta) * std::cos(phi)};
      });
  std::mt19937 random(1);
  for (auto& vertex : mesh.vertices) {
    for (double& coordinate : vertex) {
      coordinate += jitter * (static_cast<double>(random()) * 0x1p-31 - 1);
    }
  }
  return mesh;
}

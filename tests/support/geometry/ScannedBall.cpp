#include "support/geometry/ScannedBall.h"

#include <array>
#include <cstdint>
#include <map>
#include <random>

namespace support {
namespace {

using Place = std::array<int, 3>;  // on the octahedron |x| + |y| + |z| = rows

class Octahedron {
 public:
  explicit Octahedron(int rows) : m_rows(rows) {
    for (const int x : {1, -1}) {
      for (const int y : {1, -1}) {
        for (const int z : {1, -1}) AddSide({x, y, z});
      }
    }
  }

  std::map<Place, std::int32_t> vertices;
  std::vector<formats::Facet> facets;

 private:
  void AddSide(const Place& sign) {
    const auto at = [&](int i, int j) {
      const Place place = {sign[0] * i, sign[1] * j, sign[2] * (m_rows - i - j)};
      return vertices.emplace(place, static_cast<std::int32_t>(vertices.size())).first->second;
    };
    const bool turned = sign[0] * sign[1] * sign[2] < 0;
    const auto add = [&](std::int32_t a, std::int32_t b, std::int32_t c) {
      facets.push_back({{a, turned ? c : b, turned ? b : c}, 1});
    };
    for (int i = 0; i < m_rows; ++i) {
      for (int j = 0; i + j < m_rows; ++j) {
        add(at(i, j), at(i + 1, j), at(i, j + 1));
        if (i + j + 1 < m_rows) add(at(i + 1, j), at(i + 1, j + 1), at(i, j + 1));
      }
    }
  }

  int m_rows;
};

}  // namespace

formats::Mesh ScannedBall(std::size_t rows, double radius, double noise, const Point& centre) {
  Octahedron octahedron(static_cast<int>(rows));
  formats::Mesh mesh;
  mesh.vertices.resize(octahedron.vertices.size());
  mesh.facets = std::move(octahedron.facets);
  std::mt19937 random(5);
  for (const auto& [place, number] : octahedron.vertices) {
    const Point out = {static_cast<double>(place[0]), static_cast<double>(place[1]),
                       static_cast<double>(place[2])};
    // The raw numbers, as the library's distributions differ from system to system.
    const double aside = noise * (static_cast<double>(random()) / 2147483648.0 - 1);
    mesh.vertices[static_cast<std::size_t>(number)] =
        Plus(centre, out, (radius + aside) / Length(out));
  }
  return mesh;
}

}  // namespace support

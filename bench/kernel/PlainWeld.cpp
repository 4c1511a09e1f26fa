#include "PlainWeld.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"

namespace {

using Place = std::array<double, 3>;
using Cell = std::array<std::int64_t, 3>;

struct CellHash {
  std::size_t operator()(const Cell& cell) const {
    std::uint64_t hash = 0;
    for (const std::int64_t part : cell) {
      hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
      hash ^= hash >> 29;
    }
    return static_cast<std::size_t>(hash);
  }
};

double SquaredDistance(const Place& a, const Place& b) {
  double sum = 0;
  for (std::size_t i = 0; i < 3; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return sum;
}

class Grid {
 public:
  Grid(double spacing, std::size_t most) : m_spacing(spacing) { m_cells.reserve(most); }

  /// The number of a place closer than the spacing that was numbered before, else a new one.
  std::int32_t Number(const Place& place) {
    const Cell own = CellOf(place);
    for (std::int64_t i = -1; i <= 1; ++i) {
      for (std::int64_t j = -1; j <= 1; ++j) {
        for (std::int64_t k = -1; k <= 1; ++k) {
          const auto found = m_cells.find({own[0] + i, own[1] + j, own[2] + k});
          if (found == m_cells.end()) continue;
          for (const std::int32_t number : found->second) {
            const Place& other = m_places[static_cast<std::size_t>(number)];
            if (SquaredDistance(other, place) < m_spacing * m_spacing) return number;
          }
        }
      }
    }
    m_places.push_back(place);
    m_cells[own].push_back(static_cast<std::int32_t>(m_places.size() - 1));
    return static_cast<std::int32_t>(m_places.size() - 1);
  }

  std::vector<Place> Release() { return std::move(m_places); }

 private:
  Cell CellOf(const Place& place) const {
    Cell cell;
    for (std::size_t i = 0; i < 3; ++i) {
      cell[i] = static_cast<std::int64_t>(std::floor(place[i] / m_spacing));
    }
    return cell;
  }

  double m_spacing;
  std::vector<Place> m_places;
  std::unordered_map<Cell, std::vector<std::int32_t>, CellHash> m_cells;
};

}  // namespace

bool PlainWeld(double tolerance, const std::string& inputFile, const std::string& outputFile) {
  try {
    formats::Mesh mesh = formats::ReadBinarySurface(inputFile);
    Grid grid(tolerance, mesh.vertices.size());
    std::vector<std::int32_t> number;
    number.reserve(mesh.vertices.size());
    for (const Place& vertex : mesh.vertices) number.push_back(grid.Number(vertex));
    for (formats::Facet& facet : mesh.facets) {
      for (std::int32_t& v : facet.vertices) v = number[static_cast<std::size_t>(v)];
    }
    std::erase_if(mesh.facets, [](const formats::Facet& facet) {
      const auto& v = facet.vertices;
      return v[0] == v[1] || v[1] == v[2] || v[2] == v[0];
    });
    mesh.vertices = grid.Release();
    formats::WriteBinarySurface(outputFile, mesh);
    return true;
  } catch (const formats::FileError&) {
    return false;
  }
}

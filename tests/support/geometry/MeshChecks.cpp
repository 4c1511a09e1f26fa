#include "support/geometry/MeshChecks.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <vector>

namespace support {
namespace {

struct Edge {
  std::int32_t low, high;
  bool rising;
  std::size_t facet;
  bool operator<(const Edge& other) const {
    return std::tie(low, high, rising, facet) <
           std::tie(other.low, other.high, other.rising, other.facet);
  }
};

std::vector<Edge> SortedEdges(const formats::Mesh& mesh) {
  std::vector<Edge> edges;
  edges.reserve(3 * mesh.facets.size());
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::int32_t a = mesh.facets[f].vertices[k];
      const std::int32_t b = mesh.facets[f].vertices[(k + 1) % 3];
      edges.push_back({std::min(a, b), std::max(a, b), a < b, f});
    }
  }
  std::sort(edges.begin(), edges.end());
  return edges;
}

const Point& At(const formats::Mesh& mesh, std::int32_t vertex) {
  return mesh.vertices[static_cast<std::size_t>(vertex)];
}

bool HasEqualCorners(const formats::Facet& facet) {
  return facet.vertices[0] == facet.vertices[1] || facet.vertices[1] == facet.vertices[2] ||
         facet.vertices[2] == facet.vertices[0];
}

Point TwiceArea(const formats::Mesh& mesh, const formats::Facet& facet) {
  const auto corners = Corners(mesh, facet);
  return Cross(Minus(corners[1], corners[0]), Minus(corners[2], corners[0]));
}

}  // namespace

std::string ClosedFault(const formats::Mesh& mesh) {
  const auto count = static_cast<std::int64_t>(mesh.vertices.size());
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    for (const std::int32_t vertex : mesh.facets[f].vertices) {
      if (vertex < 0 || vertex >= count) {
        return "facet " + std::to_string(f) + " has a vertex number out of range";
      }
    }
    if (HasEqualCorners(mesh.facets[f])) {
      return "facet " + std::to_string(f) + " has one vertex twice";
    }
  }
  const std::vector<Edge> edges = SortedEdges(mesh);
  for (std::size_t first = 0; first < edges.size();) {
    std::size_t last = first;
    while (last < edges.size() && edges[last].low == edges[first].low &&
           edges[last].high == edges[first].high) {
      ++last;
    }
    if (last - first != 2 || edges[first].rising == edges[first + 1].rising) {
      return "edge " + std::to_string(edges[first].low) + " - " +
             std::to_string(edges[first].high) + " lies in " + std::to_string(last - first) +
             " facets or twice in one direction";
    }
    first = last;
  }
  return {};
}

std::string ZeroAreaFault(const formats::Mesh& mesh) {
  for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
    const bool flat = Length(TwiceArea(mesh, mesh.facets[f])) == 0;
    if (HasEqualCorners(mesh.facets[f]) || flat) {
      return "facet " + std::to_string(f) + " has no area";
    }
  }
  return {};
}

// The facets around a vertex form one fan when walking from each to its neighbour over the edge
// that leaves the vertex comes round after all of them.
std::string VertexFault(const formats::Mesh& mesh) {
  struct Spoke {
    std::int32_t hub, from, to;
    bool operator<(const Spoke& other) const {
      return std::tie(hub, from, to) < std::tie(other.hub, other.from, other.to);
    }
  };
  std::vector<Spoke> spokes;
  for (const formats::Facet& facet : mesh.facets) {
    for (std::size_t k = 0; k < 3; ++k) {
      spokes.push_back(
          {facet.vertices[k], facet.vertices[(k + 1) % 3], facet.vertices[(k + 2) % 3]});
    }
  }
  std::sort(spokes.begin(), spokes.end());
  for (std::size_t first = 0; first < spokes.size();) {
    std::size_t last = first;
    while (last < spokes.size() && spokes[last].hub == spokes[first].hub) ++last;
    std::size_t walked = 0;
    std::int32_t at = spokes[first].from;
    do {
      const auto next = std::lower_bound(
          spokes.begin() + static_cast<std::ptrdiff_t>(first),
          spokes.begin() + static_cast<std::ptrdiff_t>(last), Spoke{spokes[first].hub, at, 0},
          [](const Spoke& a, const Spoke& b) { return a.from < b.from; });
      if (next == spokes.begin() + static_cast<std::ptrdiff_t>(last) || next->from != at) break;
      at = next->to;
      ++walked;
    } while (at != spokes[first].from && walked <= last - first);
    if (walked != last - first) {
      return "vertex " + std::to_string(spokes[first].hub) + " is shared by several fans";
    }
    first = last;
  }
  return {};
}

double Volume(const formats::Mesh& mesh) {
  if (mesh.facets.empty()) return 0;
  // From a point of the mesh, so that a body far off does not lose its digits.
  const Point& origin = At(mesh, mesh.facets[0].vertices[0]);
  double sum = 0;
  for (const formats::Facet& facet : mesh.facets) {
    const auto corners = Corners(mesh, facet);
    sum +=
        Dot(Minus(corners[0], origin), Cross(Minus(corners[1], origin), Minus(corners[2], origin)));
  }
  return sum / 6;
}

std::array<Point, 3> Corners(const formats::Mesh& mesh, const formats::Facet& facet) {
  return {At(mesh, facet.vertices[0]), At(mesh, facet.vertices[1]), At(mesh, facet.vertices[2])};
}

Point Centre(const formats::Mesh& mesh, const formats::Facet& facet) {
  const auto corners = Corners(mesh, facet);
  const Point sum = Plus(Plus(corners[0], corners[1]), corners[2]);
  return {sum[0] / 3, sum[1] / 3, sum[2] / 3};
}

Point Normal(const formats::Mesh& mesh, const formats::Facet& facet) {
  const Point area = TwiceArea(mesh, facet);
  const double length = Length(area);
  return {area[0] / length, area[1] / length, area[2] / length};
}

formats::Mesh Box(const Point& low, const Point& high, std::uint8_t colour) {
  formats::Mesh box;
  for (unsigned corner = 0; corner < 8; ++corner) {
    Point vertex{};
    for (unsigned axis = 0; axis < 3; ++axis) {
      vertex[axis] = (corner >> axis & 1U) != 0 ? high[axis] : low[axis];
    }
    box.vertices.push_back(vertex);
  }
  const std::array<std::int32_t, 3> facets[] = {{0, 2, 3}, {0, 3, 1}, {4, 5, 7}, {4, 7, 6},
                                                {0, 1, 5}, {0, 5, 4}, {2, 6, 7}, {2, 7, 3},
                                                {0, 4, 6}, {0, 6, 2}, {1, 3, 7}, {1, 7, 5}};
  for (const auto& vertices : facets) box.facets.push_back({vertices, colour});
  return box;
}

}  // namespace support

#include "kernel/silhouette/ShadowEdges.h"

#include <algorithm>
#include <utility>

namespace kernel {
namespace {

using Number = std::uint32_t;
constexpr std::size_t kTellInterval = 65'536;  // facets, vertices

// Steps of edges, by the lower of their two vertices.
class EdgeSteps {
 public:
  EdgeSteps(const formats::Mesh& mesh, const std::vector<Point2>& points,
            const std::function<void()>& tell)
      : m_points(points), m_tell(tell) {
    // Counted first, so that one block holds them all.
    m_first.assign(points.size() + 2, 0);
    ForEachSide(mesh, [&](Number a, Number b, int) { ++m_first[std::min(a, b) + 2]; });
    for (std::size_t v = 2; v < m_first.size(); ++v) m_first[v] += m_first[v - 1];
    m_steps.resize(static_cast<std::size_t>(m_first.back()));
    ForEachSide(mesh, [&](Number a, Number b, int sign) {
      const auto place = static_cast<std::size_t>(m_first[std::min(a, b) + 1]++);
      m_steps[place] = {std::max(a, b), a < b ? sign : -sign};
    });
  }

  std::vector<PlaneEdge> Sum() {
    std::vector<PlaneEdge> edges;
    for (Number low = 0; low < m_points.size(); ++low) {
      TellAt(low);
      const auto begin = m_steps.begin() + m_first[low], end = m_steps.begin() + m_first[low + 1];
      std::sort(begin, end);
      for (auto i = begin; i != end;) {
        const Number high = i->first;
        int sum = 0;
        for (; i != end && i->first == high; ++i) sum += i->second;
        if (sum != 0) edges.push_back({m_points[low], m_points[high], {sum, 0}});
      }
    }
    return edges;
  }

 private:
  void TellAt(std::size_t i) const {
    if (i % kTellInterval == 0) m_tell();
  }

  template <typename Visit>
  void ForEachSide(const formats::Mesh& mesh, const Visit& visit) const {
    for (std::size_t f = 0; f < mesh.facets.size(); ++f) {
      TellAt(f);
      const formats::Facet& facet = mesh.facets[f];
      const auto corner = [&](std::size_t i) { return static_cast<Number>(facet.vertices[i]); };
      const int sign =
          OrientationSign(m_points[corner(0)], m_points[corner(1)], m_points[corner(2)]);
      if (sign == 0) continue;
      for (std::size_t i = 0; i < 3; ++i) visit(corner(i), corner((i + 1) % 3), sign);
    }
  }

  const std::vector<Point2>& m_points;
  const std::function<void()>& m_tell;
  // Of the steps whose lower vertex is v, the first is at m_first[v] once all are in their places.
  std::vector<std::ptrdiff_t> m_first;
  std::vector<std::pair<Number, int>> m_steps;
};

}  // namespace

std::vector<PlaneEdge> ShadowEdges(const formats::Mesh& mesh, const std::vector<Point2>& points,
                                   const std::function<void()>& tell) {
  return EdgeSteps(mesh, points, tell).Sum();
}

}  // namespace kernel

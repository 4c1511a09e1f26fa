#include "RasterWitness.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>

namespace outline_test {
namespace {

struct Cut {
  Point up, down;  // (y, z) where the facet's border passes x forwards and backwards
};

std::optional<Cut> CutAt(const formats::Mesh& mesh, const formats::Facet& facet, double x) {
  Cut cut{};
  bool found = false;
  for (std::size_t i = 0; i < 3; ++i) {
    const auto& a = mesh.vertices[static_cast<std::size_t>(facet.vertices[i])];
    const auto& b = mesh.vertices[static_cast<std::size_t>(facet.vertices[(i + 1) % 3])];
    if ((a[0] <= x) == (b[0] <= x)) continue;
    const double t = (x - a[0]) / (b[0] - a[0]);
    (b[0] > x ? cut.up : cut.down) = {a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])};
    found = true;
  }
  return found ? std::optional(cut) : std::nullopt;
}

std::vector<Cut> CutsAt(const formats::Mesh& mesh, double x) {
  std::vector<Cut> cuts;
  for (const formats::Facet& facet : mesh.facets) {
    if (const auto cut = CutAt(mesh, facet, x)) cuts.push_back(*cut);
  }
  return cuts;
}

Stretches United(Stretches stretches) {
  std::sort(stretches.begin(), stretches.end());
  Stretches united;
  for (const auto& stretch : stretches) {
    if (!united.empty() && stretch[0] <= united.back()[1]) {
      united.back()[1] = std::max(united.back()[1], stretch[1]);
    } else {
      united.push_back(stretch);
    }
  }
  return united;
}

std::array<double, 2> Distances(const Cut& cut) {
  const double dy = cut.down.x - cut.up.x, dz = cut.down.y - cut.up.y;
  const double squared = dy * dy + dz * dz;
  const double t = squared > 0 ? -(cut.up.x * dy + cut.up.y * dz) / squared : 0;
  const double clamped = std::clamp(t, 0.0, 1.0);
  return {std::hypot(cut.up.x + clamped * dy, cut.up.y + clamped * dz),
          std::max(std::hypot(cut.up.x, cut.up.y), std::hypot(cut.down.x, cut.down.y))};
}

// How often the section winds around the place (r, 0).
int WindingAt(const std::vector<Cut>& cuts, double r) {
  int winding = 0;
  for (const Cut& cut : cuts) {
    const Point &a = cut.up, &b = cut.down;
    if ((a.y <= 0) == (b.y <= 0)) continue;
    if (a.x + (b.x - a.x) * (a.y / (a.y - b.y)) > r) winding += b.y > a.y ? 1 : -1;
  }
  return winding;
}

}  // namespace

Stretches ShadowAt(const formats::Mesh& mesh, double x) {
  Stretches stretches;
  for (const Cut& cut : CutsAt(mesh, x)) {
    stretches.push_back({std::min(cut.up.x, cut.down.x), std::max(cut.up.x, cut.down.x)});
  }
  return United(std::move(stretches));
}

Stretches SpunAt(const formats::Mesh& mesh, double x, bool isClosed) {
  const std::vector<Cut> cuts = CutsAt(mesh, x);
  Stretches stretches;
  for (const Cut& cut : cuts) stretches.push_back(Distances(cut));
  const Stretches covered = United(std::move(stretches));
  if (!isClosed) return covered;
  // A circle between two stretches does not meet the surface: one place tells for all of it.
  Stretches all = covered;
  double low = 0;
  for (const auto& stretch : covered) {
    if (WindingAt(cuts, (low + stretch[0]) / 2) != 0) all.push_back({low, stretch[0]});
    low = stretch[1];
  }
  return United(std::move(all));
}

Stretches InsideAt(const Curves& curves, double x) {
  std::vector<std::pair<double, int>> crossings;
  for (const Curve& curve : curves.curves) {
    for (std::size_t i = 0; i < curve.size(); ++i) {
      const Point &a = curve[i], &b = curve[(i + 1) % curve.size()];
      if ((a.x <= x) == (b.x <= x)) continue;
      const double y = a.y + (b.y - a.y) * ((x - a.x) / (b.x - a.x));
      crossings.emplace_back(y, b.x > a.x ? 1 : -1);
    }
  }
  std::sort(crossings.begin(), crossings.end());
  Stretches stretches;
  int winding = 0;
  for (const auto& [y, step] : crossings) {
    if (winding == 0) {
      stretches.push_back({y, y});
    } else {
      stretches.back()[1] = y;
    }
    winding += step;
    // Where two curves touch, rounding may take one for the other.
    const bool touching = stretches.back()[1] - stretches.back()[0] < 1e-9;
    EXPECT_TRUE(touching || winding == 0 || winding == 1) << x << ' ' << y;
  }
  EXPECT_EQ(winding, 0) << x;
  return United(std::move(stretches));
}

double Difference(const Stretches& a, const Stretches& b) {
  // Of the ends of both in ascending order, how much lies between an odd number and the next.
  std::vector<double> ends;
  for (const Stretches* stretches : {&a, &b}) {
    for (const auto& stretch : *stretches) ends.insert(ends.end(), stretch.begin(), stretch.end());
  }
  std::sort(ends.begin(), ends.end());
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ends.size(); i += 2) sum += ends[i + 1] - ends[i];
  return sum;
}

double Length(const Stretches& stretches) {
  double sum = 0;
  for (const auto& [low, high] : stretches) sum += high - low;
  return sum;
}

double LengthOf(const Curves& curves) {
  double sum = 0;
  for (const Curve& curve : curves.curves) {
    for (std::size_t i = 0; i < curve.size(); ++i) {
      const Point &a = curve[i], &b = curve[(i + 1) % curve.size()];
      sum += std::hypot(b.x - a.x, b.y - a.y);
    }
  }
  return sum;
}

std::array<double, 2> WidthOf(const formats::Mesh& mesh) {
  const auto [least, most] = std::minmax_element(mesh.vertices.begin(), mesh.vertices.end());
  return {(*least)[0], (*most)[0]};
}

double DiagonalOf(const formats::Mesh& mesh) {
  double squared = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    const auto [least, most] =
        std::minmax_element(mesh.vertices.begin(), mesh.vertices.end(),
                            [&](const auto& a, const auto& b) { return a[k] < b[k]; });
    squared += ((*most)[k] - (*least)[k]) * ((*most)[k] - (*least)[k]);
  }
  return std::sqrt(squared);
}

}  // namespace outline_test

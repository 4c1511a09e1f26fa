#include "CompareRun.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/IFSweep.h"
#include "support/geometry/MeshChecks.h"
#include "support/geometry/MeshDistance.h"
#include "support/geometry/PlainDeviation.h"

namespace compare_test {
namespace {

using support::Point;

// Facets of a result that the witness looks at, evenly over all of them.
constexpr std::size_t kLookedAt = 1500;

// Colour 256 is the byte 0.
int ColourOf(const Bands& bands, double deviation) {
  double nearest = 0;
  int colour = static_cast<int>(bands.above & 0xFFU);
  bool found = false;
  for (std::size_t i = 0; i < bands.limits.size(); ++i) {
    const double limit = bands.limits[i];
    if (limit < deviation || (found && limit >= nearest)) continue;
    found = true;
    nearest = limit;
    colour = static_cast<int>(bands.colours[i] & 0xFFU);
  }
  return colour;
}

double Diagonal(const formats::Mesh& mesh) {
  Point low = mesh.vertices[0], high = low;
  for (const Point& vertex : mesh.vertices) {
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = std::min(low[k], vertex[k]);
      high[k] = std::max(high[k], vertex[k]);
    }
  }
  return support::Length(support::Minus(high, low));
}

double LongestEdge(const std::array<Point, 3>& corners) {
  double longest = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    longest = std::max(longest, support::Length(support::Minus(corners[(i + 1) % 3], corners[i])));
  }
  return longest;
}

// Points all over a triangle, its corners among them.
std::vector<Point> Spread(const std::array<Point, 3>& corners, int steps) {
  std::vector<Point> points;
  for (int i = 0; i <= steps; ++i) {
    for (int j = 0; i + j <= steps; ++j) {
      Point point = corners[0];
      point = support::Plus(point, support::Minus(corners[1], corners[0]),
                            static_cast<double>(i) / steps);
      points.push_back(support::Plus(point, support::Minus(corners[2], corners[0]),
                                     static_cast<double>(j) / steps));
    }
  }
  return points;
}

}  // namespace

const Bands kThree = {{-0.05, 0.05}, {1, 2}, 3};

SweepResult RunCompare(const formats::Mesh& part, const formats::Mesh& stock, const Bands& bands,
                       int throwAt, std::size_t channelMemory) {
  SweepResult result;
  result.dialog.throwAt = throwAt;
  kernel_test::ResultChannel output(result, channelMemory);
  IFSweep sweep(&result.dialog);
  SurfaceTransfer* partChannel = sweep.OpenCompareSurfaceChannel();
  SurfaceTransfer* stockChannel = sweep.OpenCompareSurfaceChannel();
  kernel_test::PlayInto(*partChannel, part);
  kernel_test::PlayInto(*stockChannel, stock);
  std::vector<unsigned> colours = bands.colours;
  std::vector<double> limits = bands.limits;
  try {
    sweep.Compare(partChannel, stockChannel, bands.above, static_cast<int>(limits.size()),
                  colours.data(), limits.data(), &output);
  } catch (const RecordingDialog::Stop&) {
    result.stopped = true;
  }
  return result;
}

void ExpectSound(const SweepResult& run) {
  EXPECT_TRUE(run.dialog.errors.empty()) << run.dialog.errors[0];
  EXPECT_TRUE(run.dialog.warnings.empty()) << run.dialog.warnings[0];
  EXPECT_EQ(run.closes, 1);
  EXPECT_EQ(support::ClosedFault(run.mesh), "");
  EXPECT_EQ(support::ZeroAreaFault(run.mesh), "");
  EXPECT_EQ(support::VertexFault(run.mesh), "");
  EXPECT_GT(support::Volume(run.mesh), 0);
}

void ExpectUnsplit(const SweepResult& run, const formats::Mesh& part, int colour) {
  EXPECT_TRUE(run.dialog.errors.empty()) << run.dialog.errors[0];
  ASSERT_EQ(run.mesh.facets.size(), part.facets.size());
  for (std::size_t f = 0; f < part.facets.size(); ++f) {
    EXPECT_EQ(support::Corners(run.mesh, run.mesh.facets[f]),
              support::Corners(part, part.facets[f]))
        << "facet " << f;
    EXPECT_EQ(run.mesh.facets[f].colour, colour) << "facet " << f;
  }
}

void ExpectColours(const SweepResult& run, const formats::Mesh& part, const formats::Mesh& stock,
                   const Bands& bands) {
  const double finest = Diagonal(part) / 2000;
  const support::MeshDistance distances(stock);
  // The witness rounds as well: at a limit either side will do.
  const auto fits = [&](double deviation, int colour) {
    return ColourOf(bands, deviation - 1e-7 * finest) == colour ||
           ColourOf(bands, deviation + 1e-7 * finest) == colour;
  };
  const std::size_t step = 1 + run.mesh.facets.size() / kLookedAt;
  std::size_t wrong = 0;
  for (std::size_t f = 0; f < run.mesh.facets.size(); f += step) {
    const formats::Facet& facet = run.mesh.facets[f];
    const auto corners = support::Corners(run.mesh, facet);
    const bool fine = LongestEdge(corners) <= finest;
    const std::vector<Point> points =
        fine ? std::vector<Point>{support::Centre(run.mesh, facet)} : Spread(corners, 5);
    for (const Point& point : points) {
      const double distance = distances.To(point);
      // Which side it is need not be known where both would do.
      if (fits(distance, facet.colour) && fits(-distance, facet.colour)) continue;
      const bool inside = support::WindingNumber(stock, point) > 0.5;
      if (fits(inside ? distance : -distance, facet.colour)) continue;
      if (++wrong > 5) continue;
      ADD_FAILURE() << "colour " << int{facet.colour} << " where the distance is " << distance
                    << (inside ? " inside" : " outside") << " at " << point[0] << ", " << point[1]
                    << ", " << point[2];
    }
  }
  EXPECT_EQ(wrong, 0U);
}

double AreaOf(const formats::Mesh& mesh, int colour) {
  double area = 0;
  for (const formats::Facet& facet : mesh.facets) {
    if (facet.colour != colour) continue;
    const auto [a, b, c] = support::Corners(mesh, facet);
    area += 0.5 * support::Length(support::Cross(support::Minus(b, a), support::Minus(c, a)));
  }
  return area;
}

}  // namespace compare_test

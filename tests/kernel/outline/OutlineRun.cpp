#include "OutlineRun.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <numbers>
#include <utility>

#include "formats/BinarySurface.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSpinsil.h"
#include "stock/SurfaceTransfer.h"
#include "support/TempDirectory.h"

namespace outline_test {
namespace {

class Bytes {
 public:
  explicit Bytes(const std::string& bytes) : m_bytes(bytes) {}

  template <typename T>
  T Take() {
    T value{};
    if (m_at + sizeof value > m_bytes.size()) {
      ADD_FAILURE() << "the file ends too early";
      m_at = m_bytes.size();
      return value;
    }
    std::memcpy(&value, m_bytes.data() + m_at, sizeof value);
    m_at += sizeof value;
    return value;
  }
  bool AtEnd() const { return m_at >= m_bytes.size(); }

 private:
  const std::string& m_bytes;
  std::size_t m_at = 18;
};

SilhouetteResult RunOnFile(const support::TempDirectory& directory, double distance, int throwAt) {
  SilhouetteResult result;
  result.dialog.throwAt = throwAt;
  std::string input = directory / "in.iff", output = directory / "out.crv";
  support::WriteWholeFile(output, kOlderOutput);
  try {
    IFSilhouette().Run(input.data(), output.data(), distance, &result.dialog);
  } catch (const kernel_test::RecordingDialog::Stop&) {
    result.stopped = true;
  }
  result.output = support::ReadWholeFile(output);
  if (result.output != kOlderOutput) result.curves = ReadTreeCurves(result.output);
  result.names = support::NamesIn(directory.Path());
  return result;
}

// Follows the segments in the order in which they came.
Curves CurvesOf(const CurveRecorder& channel) {
  Curves curves;
  int next = -1, first = -1;
  for (const auto& [from, to] : channel.segments) {
    if (first < 0) {
      curves.curves.emplace_back();
      first = from;
    } else {
      EXPECT_EQ(from, next) << "segments are not in order";
    }
    const auto& point = channel.points.at(static_cast<std::size_t>(from));
    curves.curves.back().push_back({point[0], point[1]});
    curves.heights.push_back(point[2]);
    next = to;
    if (next == first) first = -1;
  }
  EXPECT_EQ(first, -1) << "a curve is open";
  EXPECT_EQ(channel.segments.size(), channel.points.size()) << "curves share points";
  return curves;
}

double DistanceToSegment(const Point& p, const Point& a, const Point& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

}  // namespace

const std::string kOlderOutput = "an older result";

SilhouetteResult RunSilhouette(const formats::Mesh& mesh, double distance, int throwAt) {
  const support::TempDirectory directory;
  formats::WriteBinarySurface(directory / "in.iff", mesh);
  return RunOnFile(directory, distance, throwAt);
}

SilhouetteResult RunSilhouetteOnBytes(const std::string& bytes, double distance) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory / "in.iff", bytes);
  return RunOnFile(directory, distance, 0);
}

Curves ReadTreeCurves(const std::string& bytes) {
  EXPECT_EQ(bytes.substr(0, 18), "binary tree_curves");
  Bytes file(bytes);
  const auto pointCount = file.Take<std::int32_t>(), segmentCount = file.Take<std::int32_t>();
  Curves result;
  std::vector<Point> points;
  for (int i = 0; i < pointCount && !file.AtEnd(); ++i) {
    const auto x = file.Take<double>(), y = file.Take<double>();
    points.push_back({x, y});
    result.heights.push_back(file.Take<double>());
  }
  std::int32_t used = 0;
  while (!file.AtEnd()) {
    const auto count = file.Take<std::int32_t>();
    EXPECT_EQ(file.Take<std::int32_t>(), 0);
    EXPECT_EQ(file.Take<std::int32_t>(), 0);
    Curve& curve = result.curves.emplace_back();
    for (std::int32_t i = 0; i < count; ++i) {
      EXPECT_EQ(file.Take<std::int32_t>(), used + i + 1);
      EXPECT_EQ(file.Take<std::int32_t>(), used + (i + 1) % count + 1);
      curve.push_back(points.at(static_cast<std::size_t>(used + i)));
    }
    used += count;
  }
  EXPECT_EQ(used, pointCount);
  EXPECT_EQ(used, segmentCount);
  return result;
}

int CurveRecorder::Reset() {
  ++resets;
  points.clear();
  segments.clear();
  m_numbers.clear();
  return 0;
}

const int* CurveRecorder::AddPoint(const double* xyz) {
  EXPECT_EQ(closes, 0);
  if (points.size() >= mostPoints) return nullptr;
  m_numbers.push_back(std::make_unique<int>(static_cast<int>(points.size())));
  points.push_back({xyz[0], xyz[1], xyz[2]});
  return m_numbers.back().get();
}

void* CurveRecorder::AddSegment(const int* from, const int* to) {
  segments.push_back({*from, *to});
  return this;
}

int CurveRecorder::Close() {
  ++closes;
  return 1;
}

SpinResult RunSpin(const formats::Mesh& mesh, double distance, int throwAt,
                   std::size_t mostPoints) {
  SpinResult result;
  result.dialog.throwAt = throwAt;
  result.channel.mostPoints = mostPoints;
  try {
    IFSpinsil spin(&result.dialog);
    SurfaceTransfer* channel = spin.OpenInputChannel();
    channel->Reset();
    std::vector<void*> handles;
    for (const auto& vertex : mesh.vertices) handles.push_back(channel->AddVertex(vertex.data()));
    for (const formats::Facet& facet : mesh.facets) {
      const auto handle = [&](std::size_t i) {
        return handles.at(static_cast<std::size_t>(facet.vertices[i]));
      };
      channel->AddTriangle(handle(0), handle(1), handle(2), 1);
    }
    channel->Close();
    spin.Run(&result.channel, distance);
  } catch (const kernel_test::RecordingDialog::Stop&) {
    result.stopped = true;
  }
  if (result.channel.closes > 0) result.curves = CurvesOf(result.channel);
  return result;
}

double Area(const Curve& curve) {
  double sum = 0;
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const Point &a = curve[i], &b = curve[(i + 1) % curve.size()];
    sum += (a.x - curve[0].x) * (b.y - curve[0].y) - (b.x - curve[0].x) * (a.y - curve[0].y);
  }
  return sum / 2;
}

double Area(const Curves& curves) {
  double sum = 0;
  for (const Curve& curve : curves.curves) sum += Area(curve);
  return sum;
}

int Winding(const Curves& curves, const Point& point) {
  int winding = 0;
  for (const Curve& curve : curves.curves) {
    for (std::size_t i = 0; i < curve.size(); ++i) {
      const Point &a = curve[i], &b = curve[(i + 1) % curve.size()];
      if ((a.y <= point.y) == (b.y <= point.y)) continue;
      const double x = a.x + (b.x - a.x) * ((point.y - a.y) / (b.y - a.y));
      if (x > point.x) winding += b.y > a.y ? 1 : -1;
    }
  }
  return winding;
}

double DistanceTo(const Curves& curves, const Point& point) {
  double least = std::numeric_limits<double>::infinity();
  for (const Curve& curve : curves.curves) {
    for (std::size_t i = 0; i < curve.size(); ++i) {
      least = std::min(least, DistanceToSegment(point, curve[i], curve[(i + 1) % curve.size()]));
    }
  }
  return least;
}

void ExpectCurve(const Curve& curve, const Curve& expected, double within) {
  ASSERT_EQ(curve.size(), expected.size());
  const auto first = std::min_element(expected.begin(), expected.end(), [&](auto& a, auto& b) {
    return std::hypot(a.x - curve[0].x, a.y - curve[0].y) <
           std::hypot(b.x - curve[0].x, b.y - curve[0].y);
  });
  const auto shift = static_cast<std::size_t>(first - expected.begin());
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const Point& wanted = expected[(i + shift) % expected.size()];
    EXPECT_NEAR(curve[i].x, wanted.x, within) << i;
    EXPECT_NEAR(curve[i].y, wanted.y, within) << i;
  }
}

void ExpectSilent(const kernel_test::RecordingDialog& dialog) {
  EXPECT_TRUE(dialog.warnings.empty()) << dialog.warnings[0];
  EXPECT_TRUE(dialog.errors.empty()) << dialog.errors[0];
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

formats::Mesh Soup(const formats::Mesh& mesh) {
  formats::Mesh soup;
  for (formats::Facet facet : mesh.facets) {
    for (std::int32_t& vertex : facet.vertices) {
      soup.vertices.push_back(mesh.vertices[static_cast<std::size_t>(vertex)]);
      vertex = static_cast<std::int32_t>(soup.vertices.size()) - 1;
    }
    soup.facets.push_back(facet);
  }
  return soup;
}

formats::Mesh Mapped(
    formats::Mesh mesh,
    const std::function<std::array<double, 3>(const std::array<double, 3>&)>& map) {
  for (auto& vertex : mesh.vertices) vertex = map(vertex);
  return mesh;
}

formats::Mesh Moved(const formats::Mesh& mesh, double factor, const std::array<double, 3>& by) {
  return Mapped(mesh, [&](const std::array<double, 3>& v) -> std::array<double, 3> {
    return {factor * v[0] + by[0], factor * v[1] + by[1], factor * v[2] + by[2]};
  });
}

formats::Mesh Turned(const Curve& profile, int round) {
  formats::Mesh mesh;
  const auto rings = static_cast<std::int32_t>(profile.size()) - 2;
  mesh.vertices.push_back({0, 0, profile.front().y});
  for (std::int32_t i = 1; i <= rings; ++i) {
    for (int j = 0; j < round; ++j) {
      const auto& [r, z] = profile[static_cast<std::size_t>(i)];
      const double angle = 2 * std::numbers::pi * j / round;
      mesh.vertices.push_back({r * std::cos(angle), r * std::sin(angle), z});
    }
  }
  mesh.vertices.push_back({0, 0, profile.back().y});
  const std::int32_t last = rings * round + 1;
  const auto at = [&](std::int32_t i, int j) { return 1 + (i - 1) * round + j % round; };
  for (int j = 0; j < round; ++j) {
    mesh.facets.push_back({{0, at(1, j), at(1, j + 1)}, 1});
    for (std::int32_t i = 1; i < rings; ++i) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 1});
    }
    mesh.facets.push_back({{at(rings, j), last, at(rings, j + 1)}, 1});
  }
  return mesh;
}

formats::Mesh Ball(double radius, int round) {
  Curve profile;
  for (int i = 0; i <= round / 2; ++i) {
    const double angle = 2 * std::numbers::pi * i / round;
    profile.push_back({radius * std::sin(angle), radius * std::cos(angle)});
  }
  return Turned(profile, round);
}

formats::Mesh Torus(double around, double across, int round, int sides) {
  formats::Mesh mesh;
  for (int i = 0; i < round; ++i) {
    const double u = 2 * std::numbers::pi * i / round;
    for (int j = 0; j < sides; ++j) {
      const double v = 2 * std::numbers::pi * j / sides;
      const double r = around + across * std::cos(v);
      mesh.vertices.push_back({r * std::cos(u), r * std::sin(u), across * std::sin(v)});
    }
  }
  const auto at = [&](int i, int j) { return i % round * sides + j % sides; };
  for (int i = 0; i < round; ++i) {
    for (int j = 0; j < sides; ++j) {
      mesh.facets.push_back({{at(i, j), at(i + 1, j), at(i + 1, j + 1)}, 1});
      mesh.facets.push_back({{at(i, j), at(i + 1, j + 1), at(i, j + 1)}, 1});
    }
  }
  return mesh;
}

}  // namespace outline_test

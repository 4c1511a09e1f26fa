#include <array>
#include <cmath>
#include <limits>

#include "formats/BinaryWriter.h"
#include "formats/FileError.h"
#include "formats/TextBuilder.h"
#include "formats/meshes/StlFile.h"

namespace formats {
namespace {

using Vector = std::array<double, 3>;

std::array<Vector, 3> Corners(const Mesh& mesh, const Facet& facet) {
  std::array<Vector, 3> corners;
  for (std::size_t i = 0; i < 3; ++i) {
    corners[i] = mesh.vertices.at(static_cast<std::size_t>(facet.vertices[i]));
  }
  return corners;
}

Vector UnitNormal(const std::array<Vector, 3>& corners) {
  Vector a;
  Vector b;
  for (std::size_t i = 0; i < 3; ++i) {
    a[i] = corners[1][i] - corners[0][i];
    b[i] = corners[2][i] - corners[0][i];
  }
  const Vector n = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                    a[0] * b[1] - a[1] * b[0]};
  const double length = std::hypot(n[0], n[1], n[2]);
  if (!(length > 0) || !std::isfinite(length)) return {0, 0, 0};
  return {n[0] / length, n[1] / length, n[2] / length};
}

float Single(double x, const std::string& path) {
  if (std::isfinite(x) && std::abs(x) > std::numeric_limits<float>::max()) {
    throw FileError(path + ": a coordinate is too large for a binary STL file");
  }
  return static_cast<float>(x);
}

}  // namespace

void WriteStlBinary(const std::string& path, const Mesh& mesh) {
  if (mesh.facets.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw FileError(path + ": more facets than the file can count");
  }
  // Never "solid": readers that go by the header take such a file for ASCII.
  std::string header = "binary STL";
  header.resize(80, ' ');
  BinaryWriter writer(path);
  writer.WriteText(header);
  writer.Write(static_cast<std::uint32_t>(mesh.facets.size()));
  for (const Facet& facet : mesh.facets) {
    const std::array<Vector, 3> corners = Corners(mesh, facet);
    for (const double x : UnitNormal(corners)) writer.Write(static_cast<float>(x));
    for (const Vector& corner : corners) {
      for (const double x : corner) writer.Write(Single(x, path));
    }
    writer.Write<std::uint16_t>(0);
  }
  writer.Finish();
}

void WriteStlAscii(const std::string& path, const Mesh& mesh) {
  TextBuilder text(path);
  text.Add("solid mesh\n");
  for (const Facet& facet : mesh.facets) {
    const std::array<Vector, 3> corners = Corners(mesh, facet);
    const Vector n = UnitNormal(corners);
    text.Add("  facet normal ", n[0], " ", n[1], " ", n[2], "\n    outer loop\n");
    for (const Vector& c : corners) {
      text.Add("      vertex ", c[0], " ", c[1], " ", c[2], "\n");
    }
    text.Add("    endloop\n  endfacet\n");
  }
  text.Add("endsolid mesh\n");
  text.Finish();
}

}  // namespace formats

#include "formats/MeshMeasures.h"

#include <algorithm>
#include <cmath>

namespace formats {
namespace {

using Vector = std::array<double, 3>;

Vector Minus(const Vector& a, const Vector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

Vector Cross(const Vector& a, const Vector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

bool IsFinite(const Vector& v) {
  return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

// Neumaier's compensated sum: with millions of facets a plain sum loses the digits that a
// comparison of volumes is about.
class Sum {
 public:
  void Add(double term) {
    const double total = total_ + term;
    const bool totalIsLarger = std::abs(total_) >= std::abs(term);
    lost_ += totalIsLarger ? (total_ - total) + term : (term - total) + total_;
    total_ = total;
  }
  double Value() const { return total_ + lost_; }

 private:
  double total_ = 0;
  double lost_ = 0;
};

void MeasureVertices(const Mesh& mesh, MeshMeasures& measures) {
  for (const Vector& vertex : mesh.vertices) {
    if (!IsFinite(vertex)) {
      ++measures.nonFiniteVertices;
      continue;
    }
    if (!measures.box) measures.box = Box{vertex, vertex};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      measures.box->lower[axis] = std::min(measures.box->lower[axis], vertex[axis]);
      measures.box->upper[axis] = std::max(measures.box->upper[axis], vertex[axis]);
    }
  }
}

Vector Centre(const Box& box) {
  Vector centre;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    centre[axis] = box.lower[axis] / 2 + box.upper[axis] / 2;
  }
  return centre;
}

void MeasureFacets(const Mesh& mesh, MeshMeasures& measures) {
  // Seen from the middle of the mesh the terms stay small, however far it is from the origin.
  const Vector middle = measures.box ? Centre(*measures.box) : Vector{0, 0, 0};
  Sum volume;
  Sum area;
  std::array<Sum, 256> colourArea;
  std::array<std::size_t, 256> colourFacets{};
  for (const Facet& facet : mesh.facets) {
    ++colourFacets[facet.colour];
    std::array<Vector, 3> corners;
    for (std::size_t i = 0; i < 3; ++i) {
      corners[i] = mesh.vertices[static_cast<std::size_t>(facet.vertices[i])];
    }
    if (!std::all_of(corners.begin(), corners.end(), IsFinite)) continue;
    for (Vector& corner : corners) corner = Minus(corner, middle);
    const Vector normal = Cross(Minus(corners[1], corners[0]), Minus(corners[2], corners[0]));
    const double facetArea = std::sqrt(Dot(normal, normal)) / 2;
    if (facetArea == 0) ++measures.zeroAreaFacets;
    area.Add(facetArea);
    colourArea[facet.colour].Add(facetArea);
    volume.Add(Dot(corners[0], Cross(corners[1], corners[2])) / 6);
  }
  measures.volume = volume.Value();
  measures.area = area.Value();
  for (std::size_t colour = 0; colour < colourFacets.size(); ++colour) {
    if (colourFacets[colour] == 0) continue;
    measures.colours[static_cast<std::uint8_t>(colour)] = {colourFacets[colour],
                                                           colourArea[colour].Value()};
  }
}

}  // namespace

MeshMeasures MeasureMesh(const Mesh& mesh) {
  MeshMeasures measures;
  MeasureVertices(mesh, measures);
  MeasureFacets(mesh, measures);
  return measures;
}

}  // namespace formats

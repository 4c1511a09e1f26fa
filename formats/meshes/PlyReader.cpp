#include <array>
#include <cmath>
#include <optional>

#include "formats/ColourTable.h"
#include "formats/meshes/PlyFile.h"
#include "formats/meshes/PlyValues.h"
#include "formats/meshes/PolygonFan.h"

namespace formats {
namespace {

std::optional<std::size_t> IndexOf(const PlyElement& element, const char* name, bool isList) {
  for (std::size_t i = 0; i < element.properties.size(); ++i) {
    const PlyProperty& property = element.properties[i];
    if (property.name == name && property.isList == isList) return i;
  }
  return std::nullopt;
}

// The places of three properties that only mean something together.
using Triple = std::optional<std::array<std::size_t, 3>>;

Triple IndicesOf(const PlyElement& element, const char* a, const char* b, const char* c) {
  const auto first = IndexOf(element, a, false);
  const auto second = IndexOf(element, b, false);
  const auto third = IndexOf(element, c, false);
  if (!first || !second || !third) return std::nullopt;
  return std::array<std::size_t, 3>{*first, *second, *third};
}

// The plain values of one element by property; a list that is asked for goes into `list`.
void ReadElement(PlyValues& values, const PlyElement& element, std::vector<double>& plain,
                 std::optional<std::size_t> wanted, std::vector<double>& list) {
  values.BeginElement();
  for (std::size_t i = 0; i < element.properties.size(); ++i) {
    const PlyProperty& property = element.properties[i];
    if (!property.isList) {
      plain[i] = values.Value(property.type);
    } else if (wanted == i) {
      list = values.List(property);
    } else {
      values.List(property);
    }
  }
}

void ReadVertices(PlyValues& values, const PlyElement& element, Mesh& mesh) {
  const Triple xyz = IndicesOf(element, "x", "y", "z");
  if (!xyz) values.Fail("the vertices lack x, y or z");
  std::vector<double> plain(element.properties.size());
  std::vector<double> unused;
  for (std::uint64_t i = 0; i < element.count; ++i) {
    ReadElement(values, element, plain, std::nullopt, unused);
    mesh.vertices.push_back({plain[(*xyz)[0]], plain[(*xyz)[1]], plain[(*xyz)[2]]});
  }
}

std::uint8_t ColourPart(const PlyValues& values, double value, PlyType type) {
  if (type == PlyType::Float || type == PlyType::Double) value *= 255;
  if (!(value >= 0 && value <= 255)) values.Fail("a face's colour is out of range");
  return static_cast<std::uint8_t>(std::lround(value));
}

std::vector<std::int64_t> Corners(const PlyValues& values, const std::vector<double>& list) {
  std::vector<std::int64_t> corners;
  for (const double number : list) {
    if (!(std::abs(number) <= 4294967295.0)) values.Fail("a face's vertex number is out of range");
    corners.push_back(static_cast<std::int64_t>(number));
  }
  return corners;
}

class FaceReader {
 public:
  FaceReader(PlyValues& values, const PlyElement& element)
      : values_(values),
        element_(element),
        corners_(IndexOf(element, "vertex_indices", true)),
        rgb_(IndicesOf(element, "red", "green", "blue")),
        plain_(element.properties.size()) {
    if (!corners_) corners_ = IndexOf(element, "vertex_index", true);
    if (!corners_) values_.Fail("the faces lack vertex_indices");
  }

  void Read(std::uint8_t colourless, Mesh& mesh) {
    ReadElement(values_, element_, plain_, corners_, list_);
    const std::vector<std::int64_t> corners = Corners(values_, list_);
    const std::string fault = PolygonFault(corners, mesh.vertices.size());
    if (!fault.empty()) values_.Fail(fault);
    AppendFan(corners, rgb_ ? ReadColour() : colourless, mesh.facets);
  }

 private:
  std::uint8_t ReadColour() const {
    std::array<std::uint8_t, 3> parts;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t at = (*rgb_)[i];
      parts[i] = ColourPart(values_, plain_[at], element_.properties[at].type);
    }
    return ColourOfRgb({parts[0], parts[1], parts[2]});
  }

  PlyValues& values_;
  const PlyElement& element_;
  std::optional<std::size_t> corners_;
  Triple rgb_;
  std::vector<double> plain_;
  std::vector<double> list_;
};

void PassOver(PlyValues& values, const PlyElement& element) {
  std::vector<double> plain(element.properties.size());
  std::vector<double> unused;
  for (std::uint64_t i = 0; i < element.count; ++i) {
    ReadElement(values, element, plain, std::nullopt, unused);
  }
}

}  // namespace

Mesh ReadPly(const std::string& path, std::uint8_t colour) {
  const PlyHeader header = ReadPlyHeader(path);
  const std::unique_ptr<PlyValues> values = OpenPlyValues(path, header);
  Mesh mesh;
  for (const PlyElement& element : header.elements) {
    // Without properties an element takes no room at all, so its count says nothing.
    if (element.properties.empty()) continue;
    values->BeginElements(element);
    if (element.name == "vertex") {
      ReadVertices(*values, element, mesh);
    } else if (element.name == "face") {
      FaceReader faces(*values, element);
      for (std::uint64_t i = 0; i < element.count; ++i) faces.Read(colour, mesh);
    } else {
      PassOver(*values, element);
    }
  }
  return mesh;
}

}  // namespace formats

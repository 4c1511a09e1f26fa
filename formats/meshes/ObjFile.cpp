#include "formats/meshes/ObjFile.h"

#include <limits>

#include "formats/TextBuilder.h"
#include "formats/meshes/PolygonFan.h"
#include "formats/meshes/TextScanner.h"

namespace formats {
namespace {

constexpr std::string_view materialPrefix = "colour_";
constexpr std::string_view emptyObject = "empty";

// A corner is "vertex", "vertex/texture", "vertex//normal" or "vertex/texture/normal".
std::int64_t ReadCorner(const TextScanner& scanner, std::string_view word,
                        std::size_t vertexCount) {
  const std::int64_t number =
      scanner.ToInteger(word.substr(0, word.find('/')), "a face's vertex number");
  // Negative numbers count back from the last vertex so far.
  return number < 0 ? static_cast<std::int64_t>(vertexCount) + number : number - 1;
}

void ReadFace(TextScanner& scanner, std::uint8_t colour, Mesh& mesh) {
  std::vector<std::int64_t> corners;
  while (const auto word = scanner.Word()) {
    corners.push_back(ReadCorner(scanner, *word, mesh.vertices.size()));
  }
  const std::string fault = PolygonFault(corners, mesh.vertices.size());
  if (!fault.empty()) scanner.Fail(fault);
  AppendFan(corners, colour, mesh.facets);
}

// Leaves the colour as it is for a material of another's making.
void ReadMaterial(TextScanner& scanner, std::uint8_t& colour) {
  const auto name = scanner.Word();
  if (!name || !name->starts_with(materialPrefix)) return;
  const std::int64_t number =
      scanner.ToInteger(name->substr(materialPrefix.size()), "the material's colour");
  if (number < 0 || number > 255) scanner.Fail("the material's colour is not in 0..255");
  colour = static_cast<std::uint8_t>(number);
}

}  // namespace

Mesh ReadObj(const std::string& path, std::uint8_t colour) {
  TextScanner scanner(path, '#');
  Mesh mesh;
  bool anything = false;
  while (scanner.NextLine()) {
    const std::string_view keyword = *scanner.Word();
    if (keyword == "v") {
      const double x = scanner.Number("a coordinate");
      const double y = scanner.Number("a coordinate");
      const double z = scanner.Number("a coordinate");
      mesh.vertices.push_back({x, y, z});
    } else if (keyword == "f") {
      ReadFace(scanner, colour, mesh);
    } else if (keyword == "usemtl") {
      ReadMaterial(scanner, colour);
    } else if (keyword == "o" && scanner.Word() == emptyObject) {
      // Our own mark of a surface of which nothing is left.
    } else {
      continue;
    }
    anything = true;
  }
  // Statements of other kinds are passed over, so any text at all would do for an empty mesh.
  if (!anything) scanner.Fail("neither vertices nor faces");
  return mesh;
}

void WriteObj(const std::string& path, const Mesh& mesh) {
  TextBuilder text(path);
  text.Add("# ", mesh.vertices.size(), " vertices, ", mesh.facets.size(), " facets\n");
  for (const auto& v : mesh.vertices) text.Add("v ", v[0], " ", v[1], " ", v[2], "\n");
  if (mesh.vertices.empty()) text.Add("o ", emptyObject, "\n");
  int current = -1;
  for (const Facet& facet : mesh.facets) {
    if (facet.colour != current) text.Add("usemtl ", materialPrefix, int{facet.colour}, "\n");
    current = facet.colour;
    text.Add("f ", facet.vertices[0] + 1, " ", facet.vertices[1] + 1, " ", facet.vertices[2] + 1,
             "\n");
  }
  text.Finish();
}

}  // namespace formats

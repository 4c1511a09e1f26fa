#include "formats/meshes/OffFile.h"

#include <cmath>
#include <vector>

#include "formats/ColourTable.h"
#include "formats/meshes/ColouredFaces.h"
#include "formats/meshes/PolygonFan.h"
#include "formats/meshes/TextScanner.h"

namespace formats {
namespace {

std::uint64_t ReadCount(TextScanner& scanner, std::string_view what) {
  const std::string_view word = scanner.WordOnAnyLine(what);
  const std::int64_t count = scanner.ToInteger(word, what);
  if (count < 0) scanner.Fail(std::string(what) + " is negative");
  // Each vertex and each face takes a line of its own.
  if (static_cast<std::uint64_t>(count) > scanner.BytesLeft()) {
    scanner.Fail(std::string(what) + " is more than the file can hold");
  }
  return static_cast<std::uint64_t>(count);
}

void ReadHeader(TextScanner& scanner) {
  const std::string_view keyword = scanner.WordOnAnyLine("\"OFF\"");
  const bool known = keyword == "OFF" || keyword == "COFF" || keyword == "NOFF" ||
                     keyword == "CNOFF" || keyword == "STOFF";
  if (!known) scanner.Fail("the file does not begin with OFF");
}

// Integers run from 0 to 255, numbers with a point from 0 to 1.
std::uint8_t ColourPart(const TextScanner& scanner, std::string_view word) {
  const bool isFraction = word.find('.') != std::string_view::npos;
  const double value = scanner.ToNumber(word, "a face's colour") * (isFraction ? 255 : 1);
  if (!(value >= 0 && value <= 255)) scanner.Fail("a face's colour is out of range");
  return static_cast<std::uint8_t>(std::lround(value));
}

// What stands behind the corners: nothing, an index into a palette the file does not have, or red,
// green, blue and perhaps opacity.
std::uint8_t ReadColour(TextScanner& scanner, std::uint8_t colourless) {
  std::vector<std::string_view> words;
  while (const auto word = scanner.Word()) words.push_back(*word);
  if (words.size() < 3) return colourless;
  return ColourOfRgb({ColourPart(scanner, words[0]), ColourPart(scanner, words[1]),
                      ColourPart(scanner, words[2])});
}

void ReadFace(TextScanner& scanner, std::uint8_t colour, Mesh& mesh) {
  const std::int64_t count = scanner.Integer("a face's number of corners");
  std::vector<std::int64_t> corners;
  for (std::int64_t i = 0; i < count; ++i) {
    corners.push_back(scanner.Integer("a face's vertex number"));
  }
  const std::string fault = PolygonFault(corners, mesh.vertices.size());
  if (!fault.empty()) scanner.Fail(fault);
  AppendFan(corners, ReadColour(scanner, colour), mesh.facets);
}

void RequireLine(TextScanner& scanner, const char* what) {
  if (!scanner.NextLine())
    scanner.Fail(std::string("the file ends where ") + what + " should stand");
}

}  // namespace

Mesh ReadOff(const std::string& path, std::uint8_t colour) {
  TextScanner scanner(path, '#');
  ReadHeader(scanner);
  const std::uint64_t vertices = ReadCount(scanner, "the vertex count");
  const std::uint64_t faces = ReadCount(scanner, "the face count");
  Mesh mesh;
  for (std::uint64_t i = 0; i < vertices; ++i) {
    RequireLine(scanner, "a vertex");
    const double x = scanner.Number("a coordinate");
    const double y = scanner.Number("a coordinate");
    const double z = scanner.Number("a coordinate");
    mesh.vertices.push_back({x, y, z});
  }
  for (std::uint64_t i = 0; i < faces; ++i) {
    RequireLine(scanner, "a face");
    ReadFace(scanner, colour, mesh);
  }
  return mesh;
}

void WriteOff(const std::string& path, const Mesh& mesh) {
  TextBuilder text(path);
  text.Add("OFF\n", mesh.vertices.size(), " ", mesh.facets.size(), " 0\n");
  AddColouredFaces(text, mesh);
  text.Finish();
}

}  // namespace formats

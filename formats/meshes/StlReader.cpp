#include <algorithm>
#include <limits>

#include "formats/BinaryReader.h"
#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/VertexJoiner.h"
#include "formats/meshes/StlFile.h"
#include "formats/meshes/TextScanner.h"

namespace formats {
namespace {

constexpr std::uint64_t headerSize = 80;
constexpr std::uint64_t fixedSize = headerSize + 4;
constexpr std::uint64_t facetSize = 50;
// Three corners a facet must be countable in 31 bits.
constexpr std::uint64_t mostFacets = std::numeric_limits<std::int32_t>::max() / 3;

std::uint32_t AnnouncedFacets(BinaryReader& reader) {
  char header[headerSize];
  reader.ReadBytes(header, sizeof header, "header");
  return reader.Read<std::uint32_t>("facet count");
}

Mesh ReadBinary(const std::string& path, std::uint8_t colour) {
  BinaryReader reader(path);
  const std::uint32_t count = AnnouncedFacets(reader);
  if (count > mostFacets) reader.Fail("too many facets", headerSize);
  Mesh mesh;
  mesh.facets.reserve(count);
  VertexJoiner joiner(mesh.vertices);
  for (std::uint32_t i = 0; i < count; ++i) {
    float values[12];  // the normal, then the corners
    reader.ReadBytes(values, sizeof values, "facet");
    reader.Read<std::uint16_t>("facet's attribute");
    Facet facet{{}, colour};
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const float* xyz = values + 3 + 3 * corner;
      facet.vertices[corner] = joiner.Number({xyz[0], xyz[1], xyz[2]});
    }
    mesh.facets.push_back(facet);
  }
  return mesh;
}

bool SameKeyword(std::string_view word, std::string_view keyword) {
  const auto lower = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  };
  return std::equal(word.begin(), word.end(), keyword.begin(), keyword.end(),
                    [&](char a, char b) { return lower(a) == b; });
}

void Expect(TextScanner& scanner, std::string_view keyword) {
  const std::string wanted = "\"" + std::string(keyword) + "\"";
  if (!SameKeyword(scanner.WordOnAnyLine(wanted), keyword)) scanner.Fail("no " + wanted + " here");
}

Facet ReadAsciiFacet(TextScanner& scanner, VertexJoiner& joiner, std::uint8_t colour) {
  Expect(scanner, "normal");
  for (int i = 0; i < 3; ++i) scanner.WordOnAnyLine("the normal");
  Expect(scanner, "outer");
  Expect(scanner, "loop");
  Facet facet{{}, colour};
  for (std::int32_t& vertex : facet.vertices) {
    Expect(scanner, "vertex");
    std::array<double, 3> place;
    for (double& x : place) {
      x = scanner.ToNumber(scanner.WordOnAnyLine("a coordinate"), "a coordinate");
    }
    vertex = joiner.Number(place);
  }
  Expect(scanner, "endloop");
  Expect(scanner, "endfacet");
  return facet;
}

Mesh ReadAscii(const std::string& path, std::uint8_t colour) {
  TextScanner scanner(path);
  Mesh mesh;
  VertexJoiner joiner(mesh.vertices);
  while (scanner.NextLine()) {
    Expect(scanner, "solid");
    scanner.SkipLine();  // the name
    for (;;) {
      const std::string_view word = scanner.WordOnAnyLine("\"facet\" or \"endsolid\"");
      if (SameKeyword(word, "endsolid")) break;
      if (!SameKeyword(word, "facet")) scanner.Fail("neither \"facet\" nor \"endsolid\" here");
      if (mesh.facets.size() == mostFacets) scanner.Fail("too many facets");
      mesh.facets.push_back(ReadAsciiFacet(scanner, joiner, colour));
    }
  }
  return mesh;
}

bool BeginsWithSolid(const std::string& path) {
  std::ifstream stream = OpenForReading(path);
  std::string word;
  // Not ">> word": a binary file could be one endless word.
  stream >> std::ws;
  for (int i = 0; i < 5 && stream; ++i) word += static_cast<char>(stream.get());
  return SameKeyword(word, "solid");
}

}  // namespace

bool IsBinaryStl(const std::string& path) {
  const std::uint64_t size = FileSize(path);
  if (size < fixedSize) return false;
  BinaryReader reader(path);
  return size == fixedSize + facetSize * AnnouncedFacets(reader);
}

Mesh ReadStl(const std::string& path, std::uint8_t colour) {
  if (IsBinaryStl(path)) return ReadBinary(path, colour);
  if (BeginsWithSolid(path)) return ReadAscii(path, colour);
  const std::uint64_t size = FileSize(path);
  BinaryReader reader(path);
  if (size < fixedSize) {
    reader.Fail("neither an ASCII nor a binary STL file: shorter than 84 bytes", size);
  }
  const std::uint32_t count = AnnouncedFacets(reader);
  reader.Fail("neither an ASCII nor a binary STL file: " + std::to_string(count) +
                  " facets would make it " + std::to_string(fixedSize + facetSize * count) +
                  " bytes long, it has " + std::to_string(size),
              headerSize);
}

}  // namespace formats

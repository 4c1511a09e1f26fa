#include "formats/BinarySurface.h"

#include <cstdint>
#include <limits>
#include <string_view>

#include "formats/BinaryReader.h"
#include "formats/BinaryWriter.h"
#include "formats/FileError.h"

namespace formats {
namespace {

constexpr std::string_view header = "binary surface";
constexpr std::uint64_t vertexSize = 3 * sizeof(double);
constexpr std::uint64_t facetSize = 3 * sizeof(std::int32_t) + 1;

void ReadHeader(BinaryReader& reader) {
  char bytes[header.size()];
  reader.ReadBytes(bytes, sizeof bytes, "header");
  if (std::string_view(bytes, sizeof bytes) != header) {
    reader.Fail("the header is not \"binary surface\"", 0);
  }
}

std::uint64_t ReadCount(BinaryReader& reader, std::string_view field) {
  const std::uint64_t offset = reader.Offset();
  const auto count = reader.Read<std::int32_t>(field);
  if (count < 0) reader.Fail("the " + std::string(field) + " is negative", offset);
  return static_cast<std::uint64_t>(count);
}

Facet ReadFacet(BinaryReader& reader, std::uint64_t vertexCount) {
  Facet facet;
  for (std::int32_t& vertex : facet.vertices) {
    const std::uint64_t offset = reader.Offset();
    vertex = reader.Read<std::int32_t>("facet's vertex number");
    if (vertex < 1 || static_cast<std::uint64_t>(vertex) > vertexCount) {
      reader.Fail("the facet's vertex number " + std::to_string(vertex) + " is not in 1.." +
                      std::to_string(vertexCount),
                  offset);
    }
    --vertex;
  }
  facet.colour = reader.Read<std::uint8_t>("facet's colour");
  return facet;
}

void RequireCountable(const std::string& path, std::size_t count, const char* what) {
  constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
  if (count > most) {
    throw FileError(path + ": a binary surface cannot hold " + std::to_string(count) + " " + what);
  }
}

}  // namespace

Mesh ReadBinarySurface(const std::string& path) {
  BinaryReader reader(path);
  ReadHeader(reader);
  const std::uint64_t vertexCount = ReadCount(reader, "vertex count");
  const std::uint64_t facetCount = ReadCount(reader, "facet count");

  Mesh mesh;
  reader.RequireRecords(vertexCount, vertexSize, "vertices");
  mesh.vertices.resize(static_cast<std::size_t>(vertexCount));
  reader.ReadBytes(mesh.vertices.data(), static_cast<std::size_t>(vertexCount * vertexSize),
                   "vertices");
  reader.RequireRecords(facetCount, facetSize, "facets");
  mesh.facets.reserve(static_cast<std::size_t>(facetCount));
  for (std::uint64_t i = 0; i < facetCount; ++i) {
    mesh.facets.push_back(ReadFacet(reader, vertexCount));
  }
  return mesh;
}

void WriteBinarySurface(const std::string& path, const Mesh& mesh) {
  RequireCountable(path, mesh.vertices.size(), "vertices");
  RequireCountable(path, mesh.facets.size(), "facets");
  const auto vertexCount = static_cast<std::int32_t>(mesh.vertices.size());
  BinaryWriter writer(path);
  writer.WriteText(header);
  writer.Write(vertexCount);
  writer.Write(static_cast<std::int32_t>(mesh.facets.size()));
  writer.WriteBytes(mesh.vertices.data(), mesh.vertices.size() * vertexSize);
  for (const Facet& facet : mesh.facets) {
    for (const std::int32_t vertex : facet.vertices) {
      if (vertex < 0 || vertex >= vertexCount) {
        throw FileError(path + ": a facet names vertex " + std::to_string(vertex) + " of " +
                        std::to_string(vertexCount));
      }
      writer.Write<std::int32_t>(vertex + 1);
    }
    writer.Write(facet.colour);
  }
  writer.Finish();
}

}  // namespace formats

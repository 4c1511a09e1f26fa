#include <cstdint>

#include "formats/ColourTable.h"
#include "formats/meshes/ColouredFaces.h"
#include "formats/meshes/PlyFile.h"

namespace formats {
namespace {

std::string Header(const char* encoding, const Mesh& mesh) {
  return std::string("ply\nformat ") + encoding + " 1.0\nelement vertex " +
         std::to_string(mesh.vertices.size()) +
         "\nproperty double x\nproperty double y\nproperty double z\nelement face " +
         std::to_string(mesh.facets.size()) +
         "\nproperty list uchar int vertex_indices\nproperty uchar red\nproperty uchar green\n"
         "property uchar blue\nend_header\n";
}

}  // namespace

void WritePlyBinary(const std::string& path, const Mesh& mesh) {
  BinaryWriter writer(path);
  writer.WriteText(Header("binary_little_endian", mesh));
  for (const auto& vertex : mesh.vertices) {
    for (const double x : vertex) writer.Write(x);
  }
  for (const Facet& facet : mesh.facets) {
    writer.Write<std::uint8_t>(3);
    for (const std::int32_t vertex : facet.vertices) writer.Write(vertex);
    const Rgb rgb = RgbOfColour(facet.colour);
    for (const std::uint8_t part : {rgb.red, rgb.green, rgb.blue}) writer.Write(part);
  }
  writer.Finish();
}

void WritePlyAscii(const std::string& path, const Mesh& mesh) {
  TextBuilder text(path);
  text.Add(Header("ascii", mesh));
  AddColouredFaces(text, mesh);
  text.Finish();
}

}  // namespace formats

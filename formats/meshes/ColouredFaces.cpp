#include "formats/meshes/ColouredFaces.h"

#include "formats/ColourTable.h"

namespace formats {

void AddColouredFaces(TextBuilder& text, const Mesh& mesh) {
  for (const auto& v : mesh.vertices) text.Add(v[0], " ", v[1], " ", v[2], "\n");
  for (const Facet& facet : mesh.facets) {
    const auto& n = facet.vertices;
    const Rgb rgb = RgbOfColour(facet.colour);
    text.Add("3 ", n[0], " ", n[1], " ", n[2], " ", int{rgb.red}, " ", int{rgb.green}, " ",
             int{rgb.blue}, "\n");
  }
}

}  // namespace formats

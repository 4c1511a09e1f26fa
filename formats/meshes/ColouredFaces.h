#pragma once

#include "formats/Mesh.h"
#include "formats/TextBuilder.h"

namespace formats {

// What OFF and ASCII PLY say alike behind their headers: a line "x y z" for each vertex, then a
// line "3 a b c red green blue" for each facet.
void AddColouredFaces(TextBuilder& text, const Mesh& mesh);

}  // namespace formats

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "formats/meshes/MeshFile.h"

namespace host {

struct Conversion {
  std::string input;
  std::string output;                             // its extension says the format
  std::optional<formats::MeshEncoding> encoding;  // else the format's usual one
  std::uint8_t colour = 0;                        // of facets that have none in the input
};

struct ConversionResult {
  formats::MeshFormat inputFormat;
  formats::MeshFormat outputFormat;
  formats::MeshEncoding encoding;
  size_t vertices = 0;
  size_t facets = 0;
  bool coloursLost = false;      // the facets have several colours, the output format none
  bool roundedToSingle = false;  // the output format holds single precision only
};

/// Reads the input, writes the output beside its place and puts it there in one go. Throws
/// formats::FileError, also when the output is the input under whatever name, when the output's
/// extension is not known and when its format does not have the encoding; nothing is written then.
ConversionResult ConvertMesh(const Conversion& conversion);

}  // namespace host

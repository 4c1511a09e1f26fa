#pragma once

#include <optional>
#include <string>

#include "formats/meshes/MeshFile.h"
#include "host/files/StagedFile.h"

namespace host {

/// Where a mesh goes, and as what.
struct MeshOutput {
  std::string path;
  formats::MeshFormat format;
  formats::MeshEncoding encoding;
};

/// The format is what the path's extension says, the encoding the format's usual one unless given.
/// Throws formats::FileError when no format has the extension or the format not the encoding.
MeshOutput MeshOutputAt(const std::string& path,
                        std::optional<formats::MeshEncoding> encoding = std::nullopt);

/// Throws formats::FileError when both names lead to one file, under whatever spelling or link.
void RefuseOutputOverInput(const std::string& input, const std::string& output);

/// What of a mesh an output's format does not hold.
struct MeshLosses {
  bool colours = false;          // the facets have several colours, the format none
  bool doublePrecision = false;  // the format holds single precision only
};

MeshLosses LossesOf(const formats::Mesh& mesh, const MeshOutput& output);

/// Writes to the staged file's temporary path. Throws formats::FileError that names the place.
void WriteStaged(const StagedFile& staged, const formats::Mesh& mesh, const MeshOutput& output);

}  // namespace host

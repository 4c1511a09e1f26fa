#include "host/files/MeshOutput.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace host {

namespace {

using formats::FileError;
using formats::MeshEncoding;
using formats::MeshFormat;

MeshFormat FormatFor(const std::string& path) {
  if (const auto format = formats::FormatByExtension(path)) return *format;
  throw FileError(path +
                  ": no mesh format has this extension (.iff, .tmp, .stl, .ply, .obj, .off)");
}

bool HasSeveralColours(const formats::Mesh& mesh) {
  return std::any_of(mesh.facets.begin(), mesh.facets.end(), [&mesh](const formats::Facet& facet) {
    return facet.colour != mesh.facets.front().colour;
  });
}

}  // namespace

MeshOutput MeshOutputAt(const std::string& path, std::optional<MeshEncoding> encoding) {
  const MeshFormat format = FormatFor(path);
  MeshOutput output{path, format, encoding.value_or(formats::UsualEncoding(format))};
  if (formats::CanWrite(format, output.encoding)) return output;
  throw FileError(path + ": " + formats::NameOf(format) + " files are never " +
                  (output.encoding == MeshEncoding::Ascii ? "ASCII" : "binary"));
}

// Links, relative paths and, where the system does not tell them apart, capitals lead to the same
// file under another name.
void RefuseOutputOverInput(const std::string& input, const std::string& output) {
  std::error_code error;
  if (std::filesystem::equivalent(formats::LibraryPath(input), formats::LibraryPath(output),
                                  error)) {
    throw FileError(output + ": is the input itself");
  }
}

MeshLosses LossesOf(const formats::Mesh& mesh, const MeshOutput& output) {
  const bool toStl = output.format == MeshFormat::Stl;
  return {toStl && HasSeveralColours(mesh), toStl && output.encoding == MeshEncoding::Binary};
}

void WriteStaged(const StagedFile& staged, const formats::Mesh& mesh, const MeshOutput& output) {
  staged.Write([&](const std::string& path) {
    formats::WriteMesh(path, mesh, output.format, output.encoding);
  });
}

}  // namespace host

#include "host/files/ConvertMesh.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "host/files/StagedFile.h"

namespace host {

namespace {

using formats::FileError;
using formats::MeshEncoding;
using formats::MeshFormat;

MeshFormat OutputFormat(const std::string& path) {
  if (const auto format = formats::FormatByExtension(path)) return *format;
  throw FileError(path +
                  ": no mesh format has this extension (.iff, .tmp, .stl, .ply, .obj, .off)");
}

MeshEncoding OutputEncoding(const Conversion& conversion, MeshFormat format) {
  const MeshEncoding encoding = conversion.encoding.value_or(formats::UsualEncoding(format));
  if (!formats::CanWrite(format, encoding)) {
    throw FileError(conversion.output + ": " + formats::NameOf(format) + " files are never " +
                    (encoding == MeshEncoding::Ascii ? "ASCII" : "binary"));
  }
  return encoding;
}

// Links, relative paths and, where the system does not tell them apart, capitals lead to the same
// file under another name.
void RefuseOutputOverInput(const Conversion& conversion) {
  std::error_code error;
  if (std::filesystem::equivalent(formats::NativePath(conversion.input),
                                  formats::NativePath(conversion.output), error)) {
    throw FileError(conversion.output + ": is the input itself");
  }
}

bool HasSeveralColours(const formats::Mesh& mesh) {
  return std::any_of(mesh.facets.begin(), mesh.facets.end(), [&mesh](const formats::Facet& facet) {
    return facet.colour != mesh.facets.front().colour;
  });
}

}  // namespace

ConversionResult ConvertMesh(const Conversion& conversion) {
  ConversionResult result{};
  result.outputFormat = OutputFormat(conversion.output);
  result.encoding = OutputEncoding(conversion, result.outputFormat);
  result.inputFormat = formats::MeshFormatOf(conversion.input);
  RefuseOutputOverInput(conversion);

  StagedFile staged(conversion.output);
  const formats::Mesh mesh = formats::ReadMesh(conversion.input, conversion.colour);
  try {
    formats::WriteMesh(staged.TemporaryPath(), mesh, result.outputFormat, result.encoding);
  } catch (const FileError& error) {
    throw FileError(staged.AboutThePlace(error.what()));
  }
  staged.PutInPlace();

  result.vertices = mesh.vertices.size();
  result.facets = mesh.facets.size();
  const bool toStl = result.outputFormat == MeshFormat::Stl;
  result.coloursLost = toStl && HasSeveralColours(mesh);
  result.roundedToSingle = toStl && result.encoding == MeshEncoding::Binary;
  return result;
}

}  // namespace host

#include "formats/meshes/MeshFile.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/meshes/ObjFile.h"
#include "formats/meshes/OffFile.h"
#include "formats/meshes/PlyFile.h"
#include "formats/meshes/StlFile.h"

namespace formats {
namespace {

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

std::string FirstBytes(const std::string& path) {
  std::ifstream stream = OpenForReading(path);
  std::string bytes(256, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  return bytes;
}

// The first word of the text, comments passed over.
std::string_view FirstWord(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  for (;;) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (!text.starts_with('#')) return text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(std::min(text.find('\n'), text.size()));
  }
}

bool IsOffKeyword(std::string_view word) {
  return word == "OFF" || word == "COFF" || word == "NOFF" || word == "CNOFF" || word == "STOFF";
}

}  // namespace

const char* NameOf(MeshFormat format) {
  switch (format) {
    case MeshFormat::BinarySurface:
      return "binary surface";
    case MeshFormat::Stl:
      return "STL";
    case MeshFormat::Ply:
      return "PLY";
    case MeshFormat::Obj:
      return "OBJ";
    case MeshFormat::Off:
      break;
  }
  return "OFF";
}

std::optional<MeshFormat> FormatByExtension(const std::string& path) {
  const std::string name = Lower(path);
  if (name.ends_with(".iff") || name.ends_with(".tmp")) return MeshFormat::BinarySurface;
  if (name.ends_with(".stl")) return MeshFormat::Stl;
  if (name.ends_with(".ply")) return MeshFormat::Ply;
  if (name.ends_with(".obj")) return MeshFormat::Obj;
  if (name.ends_with(".off")) return MeshFormat::Off;
  return std::nullopt;
}

std::optional<MeshFormat> FormatByContent(const std::string& path) {
  const std::string bytes = FirstBytes(path);
  if (bytes.starts_with("binary surface")) return MeshFormat::BinarySurface;
  if (bytes.starts_with("ply\n") || bytes.starts_with("ply\r")) return MeshFormat::Ply;
  // Ahead of "solid", with which many a binary STL file's header begins.
  if (IsBinaryStl(path)) return MeshFormat::Stl;
  const std::string_view word = FirstWord(bytes);
  if (IsOffKeyword(word)) return MeshFormat::Off;
  if (Lower(std::string(word)) == "solid") return MeshFormat::Stl;
  return std::nullopt;
}

MeshFormat MeshFormatOf(const std::string& path) {
  if (const auto format = FormatByContent(path)) return *format;
  if (const auto format = FormatByExtension(path)) return *format;
  throw FileError(path + ": not a mesh file (.iff, .tmp, .stl, .ply, .obj or .off)");
}

Mesh ReadMesh(const std::string& path, std::uint8_t colour) {
  switch (MeshFormatOf(path)) {
    case MeshFormat::BinarySurface:
      return ReadBinarySurface(path);
    case MeshFormat::Stl:
      return ReadStl(path, colour);
    case MeshFormat::Ply:
      return ReadPly(path, colour);
    case MeshFormat::Obj:
      return ReadObj(path, colour);
    case MeshFormat::Off:
      break;
  }
  return ReadOff(path, colour);
}

bool CanWrite(MeshFormat format, MeshEncoding encoding) {
  const bool both = format == MeshFormat::Stl || format == MeshFormat::Ply;
  return both || encoding == UsualEncoding(format);
}

MeshEncoding UsualEncoding(MeshFormat format) {
  const bool isText = format == MeshFormat::Obj || format == MeshFormat::Off;
  return isText ? MeshEncoding::Ascii : MeshEncoding::Binary;
}

void WriteMesh(const std::string& path, const Mesh& mesh, MeshFormat format,
               MeshEncoding encoding) {
  const bool ascii = encoding == MeshEncoding::Ascii;
  if (!CanWrite(format, encoding)) {
    throw FileError(path + ": " + NameOf(format) + " files are never " +
                    (ascii ? "ASCII" : "binary"));
  }
  switch (format) {
    case MeshFormat::BinarySurface:
      return WriteBinarySurface(path, mesh);
    case MeshFormat::Stl:
      return ascii ? WriteStlAscii(path, mesh) : WriteStlBinary(path, mesh);
    case MeshFormat::Ply:
      return ascii ? WritePlyAscii(path, mesh) : WritePlyBinary(path, mesh);
    case MeshFormat::Obj:
      return WriteObj(path, mesh);
    case MeshFormat::Off:
      break;
  }
  WriteOff(path, mesh);
}

}  // namespace formats

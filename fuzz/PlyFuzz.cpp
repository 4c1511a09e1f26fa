// Any bytes as a polygon file: an error or a mesh.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/meshes/PlyFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.ply");
  input.Write(data, size);
  try {
    formats::ReadPly(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}

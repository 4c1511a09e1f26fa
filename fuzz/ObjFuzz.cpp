// Any bytes as an OBJ file: an error or a mesh.
#include "InputFile.h"
#include "formats/FileError.h"
#include "formats/meshes/ObjFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.obj");
  input.Write(data, size);
  try {
    formats::ReadObj(input.Path());
  } catch (const formats::FileError&) {
  }
  return 0;
}

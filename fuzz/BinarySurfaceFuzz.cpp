// Any bytes as a binary surface: an error or a mesh that can be measured.
#include "InputFile.h"
#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/MeshMeasures.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.iff");
  input.Write(data, size);
  try {
    const formats::Mesh mesh = formats::ReadBinarySurface(input.Path());
    formats::MeasureMesh(mesh);
    formats::AnalyseTopology(mesh);
  } catch (const formats::FileError&) {
  }
  return 0;
}

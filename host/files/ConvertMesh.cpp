#include "host/files/ConvertMesh.h"

#include "host/files/MeshOutput.h"

namespace host {

ConversionResult ConvertMesh(const Conversion& conversion) {
  const MeshOutput output = MeshOutputAt(conversion.output, conversion.encoding);
  ConversionResult result{};
  result.outputFormat = output.format;
  result.encoding = output.encoding;
  result.inputFormat = formats::MeshFormatOf(conversion.input);
  RefuseOutputOverInput(conversion.input, conversion.output);

  StagedFile staged(conversion.output);
  const formats::Mesh mesh = formats::ReadMesh(conversion.input, conversion.colour);
  WriteStaged(staged, mesh, output);
  staged.PutInPlace();

  result.vertices = mesh.vertices.size();
  result.facets = mesh.facets.size();
  const MeshLosses losses = LossesOf(mesh, output);
  result.coloursLost = losses.colours;
  result.roundedToSingle = losses.doublePrecision;
  return result;
}

}  // namespace host

#pragma once

#include <string>

#include "formats/Mesh.h"
#include "host/files/MeshOutput.h"

namespace host {

/// The place where a result is to appear. Made sure of ahead of the run, which may take long: the
/// constructor throws CommandError or formats::FileError when nothing can be put there.
class MeshTarget {
 public:
  explicit MeshTarget(const std::string& path);

  /// Writes the mesh beside its place and puts it there in one go.
  void Put(const formats::Mesh& mesh);

  const MeshOutput& Output() const { return m_output; }

 private:
  MeshOutput m_output;
  StagedFile m_staged;
};

}  // namespace host

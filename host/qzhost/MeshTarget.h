#pragma once

#include <string>

#include "formats/Mesh.h"
#include "host/files/MeshOutput.h"
#include "host/qzhost/ResultPlace.h"

namespace host {

/// Where a mesh is to appear. The constructor throws as that of ResultPlace does, and
/// formats::FileError when no format has the path's extension.
class MeshTarget {
 public:
  explicit MeshTarget(const std::string& path);

  /// Writes the mesh beside its place and puts it there in one go.
  void Put(const formats::Mesh& mesh);

  const MeshOutput& Output() const { return m_output; }

 private:
  MeshOutput m_output;
  ResultPlace m_place;
};

}  // namespace host

#include "host/qzhost/MeshTarget.h"

namespace host {

MeshTarget::MeshTarget(const std::string& path) : m_output(MeshOutputAt(path)), m_place(path) {}

void MeshTarget::Put(const formats::Mesh& mesh) {
  WriteStaged(m_place, mesh, m_output);
  m_place.PutInPlace();
}

}  // namespace host

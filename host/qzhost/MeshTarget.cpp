#include "host/qzhost/MeshTarget.h"

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"

namespace host {

MeshTarget::MeshTarget(const std::string& path) : m_output(MeshOutputAt(path)), m_staged(path) {
  if (IsDirectory(path)) throw CommandError(path + ": is a directory");
  try {
    formats::OpenForWriting(m_staged.TemporaryPath());
  } catch (const formats::FileError& error) {
    throw formats::FileError(m_staged.AboutThePlace(error.what()));
  }
}

void MeshTarget::Put(const formats::Mesh& mesh) {
  WriteStaged(m_staged, mesh, m_output);
  m_staged.PutInPlace();
}

}  // namespace host

#include "host/files/StagedFile.h"

#include <system_error>

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace host {

namespace {

std::filesystem::path FollowLinks(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  const auto target = std::filesystem::weakly_canonical(path, error);
  return error ? path : target;
}

// Nobody's file is taken for the temporary one.
std::filesystem::path FreeNameBeside(const std::filesystem::path& place) {
  for (int number = 0;; ++number) {
    std::filesystem::path name = place;
    name += "." + std::to_string(number) + ".new";
    std::error_code error;
    const bool taken = std::filesystem::exists(std::filesystem::symlink_status(name, error));
    if (!taken) return name;
  }
}

}  // namespace

StagedFile::StagedFile(const std::string& path)
    : m_place(FollowLinks(formats::NativePath(path))), m_temporary(FreeNameBeside(m_place)) {}

StagedFile::~StagedFile() {
  std::error_code ignored;
  std::filesystem::remove(m_temporary, ignored);
}

void StagedFile::PutInPlace() {
  std::error_code error;
  std::filesystem::rename(m_temporary, m_place, error);
  if (error) {
    throw formats::FileError(m_place.string() + ": cannot be replaced: " + error.message());
  }
}

}  // namespace host

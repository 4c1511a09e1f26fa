#include "host/files/StagedFile.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "platform/PathText.h"

namespace host {

namespace {

// Also to where no file is yet. A ring of links is given up on.
std::filesystem::path FollowLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int links = 0; links < kMostLinks && std::filesystem::is_symlink(path, error); ++links) {
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) break;
    // A relative link starts from its own directory; an absolute one takes its place.
    path = path.parent_path() / target;
  }
  return path;
}

// A file could be replaced whatever its mode says, but it is protected for a reason.
void RequireWritable(const std::string& path, const std::filesystem::path& place) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(place, error)) return;
  errno = 0;
  const std::fstream stream(place, std::ios::in | std::ios::out | std::ios::binary);
  if (stream) return;
  throw formats::FileError(path + ": cannot be written: " + std::generic_category().message(errno));
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
    : m_path(path),
      m_place(FollowLinks(formats::LibraryPath(path))),
      m_temporary(FreeNameBeside(m_place)) {
  RequireWritable(m_path, m_place);
}

std::string StagedFile::TemporaryPath() const { return TextFromPath(m_temporary); }

StagedFile::~StagedFile() {
  std::error_code ignored;
  std::filesystem::remove(m_temporary, ignored);
}

void StagedFile::Write(const std::function<void(const std::string& path)>& write) const {
  try {
    write(TemporaryPath());
  } catch (const formats::FileError& error) {
    throw formats::FileError(AboutThePlace(error.what()));
  }
}

std::string StagedFile::AboutThePlace(std::string message) const {
  const std::string temporary = TemporaryPath();
  const size_t found = message.find(temporary);
  if (found != std::string::npos) message.replace(found, temporary.size(), m_path);
  return message;
}

void StagedFile::PutInPlace() {
  std::error_code error;
  std::filesystem::rename(m_temporary, m_place, error);
  if (error) {
    throw formats::FileError(m_path + ": cannot be replaced: " + error.message());
  }
}

}  // namespace host

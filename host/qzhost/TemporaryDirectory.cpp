#include "host/qzhost/TemporaryDirectory.h"

#include <system_error>

#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"
#include "platform/PathText.h"
#include "platform/QZCore.h"

namespace host {

namespace {

// Another user may have left a directory of the same process number behind.
std::filesystem::path MakeNew(const std::string& beginning) {
  for (int number = 0;; ++number) {
    std::filesystem::path path = PathFromText(beginning + std::to_string(number));
    std::error_code error;
    if (std::filesystem::create_directory(path, error)) return path;
    if (!std::filesystem::exists(std::filesystem::symlink_status(path, error))) {
      throw CommandError(TextFromPath(path) + ": cannot be made", kFailed);
    }
  }
}

}  // namespace

TemporaryDirectory::TemporaryDirectory()
    : m_path(MakeNew(FullPath(std::string(GetTempDirectory().GetString()) + "qzhost-" +
                              std::to_string(ProcessNumber()) + "-"))) {
  std::error_code ignored;
  std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
}

std::string TemporaryDirectory::File(const std::string& name) const {
  return TextFromPath(m_path / PathFromText(name));
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

}  // namespace host

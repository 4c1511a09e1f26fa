#pragma once

#include <filesystem>
#include <string>

namespace host {

/// A new, empty directory in the host's temporary directory, for this user only; goes with the
/// object and everything in it. Throws CommandError when it cannot be made.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  /// The full path of a file in it.
  std::string File(const std::string& name) const;

 private:
  std::filesystem::path m_path;
};

}  // namespace host

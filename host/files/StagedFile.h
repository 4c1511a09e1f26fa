#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace host {

/// Lets a file appear complete or not at all: it is written under another name beside its place and
/// put there in one go. What stood there before stays until then.
class StagedFile {
 public:
  /// A link at `path` is followed: the file it leads to is the one replaced. Throws
  /// formats::FileError when a file stands there that must not be written.
  explicit StagedFile(const std::string& path);
  /// Removes the file unless it has been put in place.
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  /// The name to write to.
  std::string TemporaryPath() const;

  /// Calls `write` with that name. A formats::FileError about it names the place instead.
  void Write(const std::function<void(const std::string& path)>& write) const;

  /// Throws formats::FileError when the place cannot be taken.
  void PutInPlace();

 private:
  std::string AboutThePlace(std::string message) const;

  std::string m_path;
  std::filesystem::path m_place;
  std::filesystem::path m_temporary;
};

}  // namespace host

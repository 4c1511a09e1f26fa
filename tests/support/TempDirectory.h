#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A fresh directory of the test's own; it and all that is in it go with the object.
class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

  /// The path of a file in it.
  std::string operator/(const std::string& name) const { return (m_path / name).string(); }

  /// A directory below this one, made when it is not there.
  std::filesystem::path Sub(const std::string& name) const;

 private:
  std::filesystem::path m_path;
};

/// The directory as the host hands it to the add-in: backslashes and a trailing one.
std::string AddinSpelling(const std::filesystem::path& directory);

/// All bytes of a file. A file that cannot be opened fails the test and gives an empty text.
std::string ReadWholeFile(const std::filesystem::path& path);

/// A text file's lines with the system's line ends turned into '\n'.
std::string ReadTextFile(const std::filesystem::path& path);

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

/// A text as a file holds it: with the system's line ends in place of '\n'.
std::string TextFileBytes(const std::string& text);

/// Every file of a directory with all its bytes, by its name.
std::map<std::string, std::string> FilesIn(const std::filesystem::path& directory);

/// The names in a directory, sorted.
std::vector<std::string> NamesIn(const std::filesystem::path& directory);

}  // namespace support

#pragma once

// What the executable asks of the system; one source for each system.

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// Enough of a file to tell whether it is still the same, unchanged one.
struct FileState {
  bool exists = false;
  std::uint64_t size = 0;
  std::int64_t modified = 0;
  std::uint64_t identity = 0;

  bool operator==(const FileState&) const = default;
};

FileState StateOfFile(const std::string& path);
bool IsDirectory(const std::string& path);
bool IsWritableDirectory(const std::string& path);

/// Names, sorted, of the files in a directory; none when it cannot be read.
std::vector<std::string> FilesIn(const std::string& directory);

/// In the system's own spelling. A relative path is taken from the current directory.
std::string FullPath(const std::string& path);

/// The directory of the running executable, with a trailing separator.
std::string ExecutableDirectory();

/// The largest amount of memory this process has held so far, in bytes.
std::uint64_t PeakMemory();

unsigned long ProcessNumber();
void SetEnvironmentText(const std::string& name, const std::string& text);
bool StandardErrorIsTerminal();

/// A text of this program, in the system's code page, as JSON wants it. What is not of that code
/// page, or on a system that knows no more than bytes not UTF-8, is left to whoever prints it.
std::string Utf8(const std::string& text);

}  // namespace host

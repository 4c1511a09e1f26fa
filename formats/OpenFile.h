#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace formats {

// The path in the system's own spelling. Jobs name their directories with backslashes on every
// system, so both separators are understood wherever a file is opened.
std::string NativePath(std::string path);

// The same for the library's operations on files.
std::filesystem::path LibraryPath(const std::string& path);

// A binary stream on an existing regular file, at byte 0. Throws FileError.
std::ifstream OpenForReading(const std::string& path);

// A binary stream on a new or emptied file. Throws FileError.
std::ofstream OpenForWriting(const std::string& path);

// Bytes in the file. Throws FileError.
std::uint64_t FileSize(const std::string& path);

// The whole file as it stands, line ends included. Throws FileError.
std::string ReadWholeFile(const std::string& path);

}  // namespace formats

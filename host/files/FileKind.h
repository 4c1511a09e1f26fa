#pragma once

#include <optional>
#include <string>

namespace host {

enum class FileKind {
  kSurface,
  kCurves,
  kInterchange,
  kInterchangeText,
  kPath,
  kErrorCapture,
  kOther
};

/// "surface", "curves", "toolpath interchange file", "text of the interchange file", "per-path
/// file", "error capture file", "other file".
const char* NameOf(FileKind kind);

/// What the file is, by its name and its first bytes; a damaged file is still what its name says.
/// Throws formats::FileError when it cannot be opened.
FileKind KindOf(const std::string& path);

/// The number in "TmpPathInfo%d.tmp", the name without its directory.
std::optional<int> PathNumber(const std::string& name);

/// The path without its directory, whichever separator it uses.
std::string FileName(const std::string& path);

}  // namespace host

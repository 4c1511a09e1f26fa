#pragma once

#include <string>
#include <vector>

#include "support/JobFiles.h"

/// The text form's lines put together by hand, line ends as '\n'.
namespace lines {

/// "%20.10f" by the C library, for values whose digits every C library gets right.
std::string Number(double value);

/// The three lines in front of the first path.
std::string Head(const std::string& pathCount);

/// A path up to and including its number of cuts.
std::string PathHead(const support::Path& path, const std::string& cutCount = "1");

/// A cut's lines.
std::string Cut(const support::Path& path);

/// Everything for well-formed paths of one cut each.
std::string File(const std::vector<support::Path>& paths);

}  // namespace lines

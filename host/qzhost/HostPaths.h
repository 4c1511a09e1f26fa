#pragma once

#include <string>

namespace host {

/// The directory as the add-in is given it: full, with backslashes, one at the end.
std::string AddInDirectory(const std::string& path);

/// The file as the add-in is given it: full, with backslashes.
std::string AddInFile(const std::string& path);

}  // namespace host

#pragma once

#include <string>

namespace host {

/// Whether two files hold the same bytes. Throws formats::FileError when either cannot be read.
bool SameBytes(const std::string& first, const std::string& second);

}  // namespace host

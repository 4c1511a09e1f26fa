#pragma once

#include <string>

#include "SystemApi.h"

namespace host {

/// The library file's name on this system.
std::string AddInFileName();

/// Loads the library and has its entry routine run; null, and why, when the file cannot be loaded
/// or the entry routine refuses.
HMODULE LoadAddInLibrary(const std::string& path, std::string* reason);

void UnloadAddInLibrary(HMODULE library);

}  // namespace host

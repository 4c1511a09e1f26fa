#pragma once

#include "platform/SystemTypes.h"

/// The standard library's fopen and remove for paths in the add-in's spelling: on Windows they go
/// straight through, elsewhere backslashes become slashes first.
FILE* OpenStdFile(const char* path, const char* mode);
int RemoveStdFile(const char* path);

#pragma once

#include "platform/SystemTypes.h"

/// The standard library's fopen and remove for paths in the add-in's spelling: on Windows they go
/// straight through, elsewhere backslashes become slashes first.
FILE* OpenStdFile(const char* path, const char* mode);
int RemoveStdFile(const char* path);

/// The standard library's fseek from the file's start, for files of any length. 0 on success.
int SeekStdFile(FILE* stream, long long offset);

#include "platform/files.h"

#include <cstdio>

FILE* OpenStdFile(const char* path, const char* mode) { return std::fopen(path, mode); }

int RemoveStdFile(const char* path) { return std::remove(path); }

int SeekStdFile(FILE* stream, long long offset) { return _fseeki64(stream, offset, SEEK_SET); }

#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

// The standard library's own functions, past the observed ones (the linker's --wrap names them).
extern "C" {
FILE* __real_fopen(const char* path, const char* mode);
int __real_fclose(FILE* stream);
size_t __real_fread(void* data, size_t size, size_t count, FILE* stream);
size_t __real_fwrite(const void* data, size_t size, size_t count, FILE* stream);
int __real_fflush(FILE* stream);
int __real_fseek(FILE* stream, long offset, int origin);
int __real_fgetpos(FILE* stream, fpos_t* place);
int __real_fsetpos(FILE* stream, const fpos_t* place);
int __real_remove(const char* path);
}

namespace support {

/// The path with slashes, which both systems understand.
std::string WithSlashes(std::string path);

/// What is known of an open stream.
struct OpenStream {
  std::string unit;  // empty for a plain stream
  std::string path;  // as events spell it
};

void RememberStream(FILE* stream, const OpenStream& what);
/// Whether the stream was opened under the living host; the test framework has others.
bool IsRemembered(FILE* stream);
/// The path of a stream that was opened under the living host, as events spell it.
std::string PathOf(FILE* stream);
/// Forgets the stream and returns what was known of it.
OpenStream ForgetStream(FILE* stream);

}  // namespace support

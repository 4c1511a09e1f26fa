// The standard library's file functions as the code under test sees them: observed and failable
// while a TestHost lives, otherwise straight through.

#include <cerrno>
#include <string>

#include "support/RealLibrary.h"
#include "support/SystemCalls.h"
#include "support/TestHost.h"

namespace {

bool MustFail(const char* function) {
  support::TestHost* host = support::CurrentTestHost();
  return host != nullptr && host->faults.Enter(function);
}

std::string Spell(const char* path) {
  support::TestHost* host = support::CurrentTestHost();
  return host == nullptr ? path : host->events.Spell(path);
}

}  // namespace

extern "C" {

FILE* __wrap_fopen(const char* path, const char* mode) {
  if (support::CurrentTestHost() == nullptr) return __real_fopen(path, mode);
  FILE* stream = MustFail("fopen") ? nullptr : __real_fopen(path, mode);
  if (stream == nullptr && errno == 0) errno = ENOENT;
  const std::string spelled = Spell(path);
  support::Note("fopen " + spelled + " " + mode + (stream == nullptr ? " fails" : ""));
  if (stream != nullptr) support::RememberStream(stream, {"", spelled});
  return stream;
}

int __wrap_fclose(FILE* stream) {
  if (support::CurrentTestHost() == nullptr) return __real_fclose(stream);
  support::Note("fclose " + support::ForgetStream(stream).path);
  const bool failing = MustFail("fclose");
  const int result = __real_fclose(stream);
  return failing ? EOF : result;
}

size_t __wrap_fread(void* data, size_t size, size_t count, FILE* stream) {
  if (MustFail("fread")) return 0;
  const size_t got = __real_fread(data, size, count, stream);
  support::TestHost* host = support::CurrentTestHost();
  if (host != nullptr) host->faults.NoteRead(got * size);
  return got;
}

size_t __wrap_fwrite(const void* data, size_t size, size_t count, FILE* stream) {
  support::TestHost* host = support::CurrentTestHost();
  if (host == nullptr || size == 0) return __real_fwrite(data, size, count, stream);
  if (host->faults.Enter("fwrite")) return 0;
  if (host->faults.onWrite) host->faults.onWrite(support::PathOf(stream), size * count);
  const size_t fitting = host->faults.Claim(size * count);
  return __real_fwrite(data, 1, fitting, stream) / size;
}

int __wrap_fflush(FILE* stream) {
  if (!support::IsRemembered(stream)) return __real_fflush(stream);
  return MustFail("fflush") ? EOF : __real_fflush(stream);
}

int __wrap_fseek(FILE* stream, long offset, int origin) {
  return support::ObserveSeek(&__real_fseek, stream, offset, origin);
}

int __wrap_fgetpos(FILE* stream, fpos_t* place) {
  return !support::g_isSeeking && MustFail("fgetpos") ? -1 : __real_fgetpos(stream, place);
}

int __wrap_fsetpos(FILE* stream, const fpos_t* place) {
  return !support::g_isSeeking && MustFail("fsetpos") ? -1 : __real_fsetpos(stream, place);
}

int __wrap_remove(const char* path) {
  const int result = MustFail("remove") ? -1 : __real_remove(path);
  support::Note("remove " + Spell(path) + (result == 0 ? "" : " fails"));
  return result;
}

}  // extern "C"

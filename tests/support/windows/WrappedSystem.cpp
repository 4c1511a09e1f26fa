// Functions that the system's headers declare as imported are called through a pointer named
// __imp_NAME; it is that pointer which the linker's --wrap turns to the variables here.

#include "support/RealLibrary.h"
#include "support/SystemCalls.h"

namespace {

DWORD WINAPI GetDirectory(DWORD size, char* buffer);
BOOL WINAPI SetDirectory(const char* path);
BOOL WINAPI Copy(const char* from, const char* to, BOOL failIfExists);
HMODULE WINAPI Load(const char* name);
BOOL WINAPI Free(HMODULE library);
errno_t __cdecl Open(FILE** stream, const char* path, const char* mode);
int __cdecl Seek(FILE* stream, long long offset, int origin);

}  // namespace

extern "C" {

extern decltype(&GetCurrentDirectoryA) __real___imp_GetCurrentDirectoryA;
extern decltype(&SetCurrentDirectoryA) __real___imp_SetCurrentDirectoryA;
extern decltype(&CopyFileA) __real___imp_CopyFileA;
extern decltype(&LoadLibraryA) __real___imp_LoadLibraryA;
extern decltype(&FreeLibrary) __real___imp_FreeLibrary;
extern decltype(&fopen_s) __real___imp_fopen_s;
extern decltype(&_fseeki64) __real___imp__fseeki64;

decltype(&GetCurrentDirectoryA) __wrap___imp_GetCurrentDirectoryA = &GetDirectory;
decltype(&SetCurrentDirectoryA) __wrap___imp_SetCurrentDirectoryA = &SetDirectory;
decltype(&CopyFileA) __wrap___imp_CopyFileA = &Copy;
decltype(&LoadLibraryA) __wrap___imp_LoadLibraryA = &Load;
decltype(&FreeLibrary) __wrap___imp_FreeLibrary = &Free;
decltype(&fopen_s) __wrap___imp_fopen_s = &Open;
decltype(&_fseeki64) __wrap___imp__fseeki64 = &Seek;

}  // extern "C"

namespace {

DWORD WINAPI GetDirectory(DWORD size, char* buffer) {
  return support::ObserveGetCurrentDirectory(__real___imp_GetCurrentDirectoryA, size, buffer);
}

BOOL WINAPI SetDirectory(const char* path) {
  return support::ObserveSetCurrentDirectory(__real___imp_SetCurrentDirectoryA, path);
}

BOOL WINAPI Copy(const char* from, const char* to, BOOL failIfExists) {
  return support::ObserveCopyFile(__real___imp_CopyFileA, from, to, failIfExists);
}

HMODULE WINAPI Load(const char* name) {
  return support::ObserveLoadLibrary(__real___imp_LoadLibraryA, name);
}

BOOL WINAPI Free(HMODULE library) {
  return support::ObserveFreeLibrary(__real___imp_FreeLibrary, library);
}

errno_t __cdecl Open(FILE** stream, const char* path, const char* mode) {
  support::TestHost* host = support::CurrentTestHost();
  if (host == nullptr) return __real___imp_fopen_s(stream, path, mode);
  errno_t error = ENOENT;
  *stream = nullptr;
  if (!host->faults.Enter("fopen")) error = __real___imp_fopen_s(stream, path, mode);
  const std::string spelled = host->events.Spell(path);
  host->events.Note("fopen " + spelled + " " + mode + (*stream == nullptr ? " fails" : ""));
  if (*stream != nullptr) support::RememberStream(*stream, {"", spelled});
  return error;
}

int __cdecl Seek(FILE* stream, long long offset, int origin) {
  return support::ObserveSeek(__real___imp__fseeki64, stream, offset, origin);
}

}  // namespace

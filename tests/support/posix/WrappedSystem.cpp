#include <sys/types.h>

#include "support/SystemCalls.h"

extern "C" {

DWORD __real_GetCurrentDirectoryA(DWORD size, char* buffer);
BOOL __real_SetCurrentDirectoryA(const char* path);
BOOL __real_CopyFileA(const char* from, const char* to, BOOL failIfExists);
HMODULE __real_LoadLibraryA(const char* name);
BOOL __real_FreeLibrary(HMODULE library);
int __real_fseeko(FILE* stream, off_t offset, int origin);

DWORD __wrap_GetCurrentDirectoryA(DWORD size, char* buffer) {
  return support::ObserveGetCurrentDirectory(&__real_GetCurrentDirectoryA, size, buffer);
}

BOOL __wrap_SetCurrentDirectoryA(const char* path) {
  return support::ObserveSetCurrentDirectory(&__real_SetCurrentDirectoryA, path);
}

BOOL __wrap_CopyFileA(const char* from, const char* to, BOOL failIfExists) {
  return support::ObserveCopyFile(&__real_CopyFileA, from, to, failIfExists);
}

HMODULE __wrap_LoadLibraryA(const char* name) {
  return support::ObserveLoadLibrary(&__real_LoadLibraryA, name);
}

BOOL __wrap_FreeLibrary(HMODULE library) {
  return support::ObserveFreeLibrary(&__real_FreeLibrary, library);
}

int __wrap_fseeko(FILE* stream, off_t offset, int origin) {
  return support::ObserveSeek(&__real_fseeko, stream, offset, origin);
}

}  // extern "C"

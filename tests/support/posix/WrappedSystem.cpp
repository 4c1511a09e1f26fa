#include "support/SystemCalls.h"

extern "C" {

DWORD __real_GetCurrentDirectoryA(DWORD size, char* buffer);
BOOL __real_SetCurrentDirectoryA(const char* path);
BOOL __real_CopyFileA(const char* from, const char* to, BOOL failIfExists);

DWORD __wrap_GetCurrentDirectoryA(DWORD size, char* buffer) {
  return support::ObserveGetCurrentDirectory(&__real_GetCurrentDirectoryA, size, buffer);
}

BOOL __wrap_SetCurrentDirectoryA(const char* path) {
  return support::ObserveSetCurrentDirectory(&__real_SetCurrentDirectoryA, path);
}

BOOL __wrap_CopyFileA(const char* from, const char* to, BOOL failIfExists) {
  return support::ObserveCopyFile(&__real_CopyFileA, from, to, failIfExists);
}

}  // extern "C"

#pragma once

// The part of the Windows interface that the add-in and its host use, on systems without it. Paths
// may use either separator.

#include <cstdint>
#include <cstdio>

#include "platform/SystemTypes.h"

typedef int BOOL;
typedef std::uint32_t DWORD;
typedef void* LPVOID;
typedef const char* LPCSTR;
typedef HINSTANCE HMODULE;
typedef int errno_t;
typedef void (*FARPROC)();

#define WINAPI
#define APIENTRY
#define FALSE 0
#define TRUE 1
#define MAX_PATH 260
#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3
#define KEY_READ 0x20019

extern "C" {

/// Writes the current directory, with slashes and without a trailing one. Returns its length; when
/// `size` is too small nothing is written and the size needed is returned, zero included. 0:
/// failed.
DWORD GetCurrentDirectoryA(DWORD size, char* buffer);
BOOL SetCurrentDirectoryA(const char* path);

/// Copies contents, access rights and the time of the last change. A failure leaves no partial
/// copy.
BOOL CopyFileA(const char* from, const char* to, BOOL failIfExists);

/// Opens a shared library; "NAME.dll" stands for "NAME.so". A relative path is looked for in the
/// directory of the executable, then in the current one, then where the system looks.
HMODULE LoadLibraryA(const char* name);
BOOL FreeLibrary(HMODULE library);
FARPROC GetProcAddress(HMODULE library, const char* name);

/// 0 and the stream, or an errno value and null.
errno_t fopen_s(FILE** stream, const char* path, const char* mode);
}

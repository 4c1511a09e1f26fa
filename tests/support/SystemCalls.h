#pragma once

// What the observed system calls do; how a call comes here and how the real one is reached differs
// from system to system.

#include <filesystem>
#include <system_error>

#include "SystemApi.h"
#include "support/RealLibrary.h"
#include "support/TestHost.h"

namespace support {

template <typename Real>
DWORD ObserveGetCurrentDirectory(Real real, DWORD size, char* buffer) {
  TestHost* host = CurrentTestHost();
  const bool failing = host != nullptr && host->faults.Enter("GetCurrentDirectoryA");
  Note("getcwd " + std::to_string(size) + (failing ? " fails" : ""));
  return failing ? 0 : real(size, buffer);
}

template <typename Real>
BOOL ObserveSetCurrentDirectory(Real real, const char* path) {
  TestHost* host = CurrentTestHost();
  if (host == nullptr) return real(path);
  const BOOL done = host->faults.Enter("SetCurrentDirectoryA") ? FALSE : real(path);
  host->events.Note("chdir " + host->events.Spell(path) + (done != FALSE ? "" : " fails"));
  return done;
}

// Whether the disk has room for the copy.
inline bool Fits(TestHost& host, const char* from) {
  std::error_code missing;
  const auto size = std::filesystem::file_size(WithSlashes(from), missing);
  return missing || host.faults.TakeRoom(static_cast<std::size_t>(size));
}

template <typename Real>
BOOL ObserveCopyFile(Real real, const char* from, const char* to, BOOL failIfExists) {
  TestHost* host = CurrentTestHost();
  if (host == nullptr) return real(from, to, failIfExists);
  const bool refused = host->faults.Enter("CopyFileA") || !Fits(*host, from);
  const BOOL done = refused ? FALSE : real(from, to, failIfExists);
  host->events.Note("copy " + host->events.Spell(from) + " -> " + host->events.Spell(to) +
                    (failIfExists != FALSE ? " unless it exists" : "") +
                    (done != FALSE ? "" : " fails"));
  return done;
}

// Whether a real seek is under way: some libraries make it of fgetpos and fsetpos, which are then
// nobody's calls.
inline bool g_isSeeking = false;

template <typename Real, typename Offset>
int ObserveSeek(Real real, FILE* stream, Offset offset, int origin) {
  TestHost* host = CurrentTestHost();
  if (host == nullptr) return real(stream, offset, origin);
  host->faults.NoteSeek();
  if (host->faults.Enter("fseek")) return -1;
  g_isSeeking = true;
  const int result = real(stream, offset, origin);
  g_isSeeking = false;
  return result;
}

template <typename Real>
HMODULE ObserveLoadLibrary(Real real, const char* name) {
  TestHost* host = CurrentTestHost();
  if (host == nullptr) return real(name);
  const HMODULE library = host->faults.Enter("LoadLibraryA") ? nullptr : real(name);
  host->events.Note("load " + host->events.Spell(name) + (library != nullptr ? "" : " fails"));
  return library;
}

template <typename Real>
BOOL ObserveFreeLibrary(Real real, HMODULE library) {
  Note("unload");
  return real(library);
}

}  // namespace support

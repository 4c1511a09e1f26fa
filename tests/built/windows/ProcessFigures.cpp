#include "built/ProcessFigures.h"

#include <algorithm>
#include <vector>

#include "SystemApi.h"
// These build on the system's own header.
#include <tlhelp32.h>
#include <winternl.h>

namespace {

std::size_t BytesIn(HANDLE heap) {
  std::size_t bytes = 0;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry)) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}

std::size_t BytesInAllHeaps() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  std::size_t bytes = 0;
  for (HANDLE heap : heaps) bytes += BytesIn(heap);
  return bytes;
}

// From the list of all processes' handles.
std::size_t ListedHandles() {
  struct Handle {
    USHORT process;  // no more of its number
    USHORT trace;
    UCHAR kind;
    UCHAR flags;
    USHORT value;
    void* object;
    ULONG access;
  };
  struct List {
    ULONG count;
    Handle handles[1];
  };
  constexpr auto kAllHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  std::vector<ULONG_PTR> room(1 << 16);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kAllHandles, room.data(),
                                  static_cast<ULONG>(room.size() * sizeof room[0]), &needed) != 0) {
    room.resize(2 * room.size());
  }
  const List* const list = reinterpret_cast<const List*>(room.data());
  const auto self = static_cast<USHORT>(GetCurrentProcessId());
  return static_cast<std::size_t>(
      std::count_if(list->handles, list->handles + list->count,
                    [self](const Handle& handle) { return handle.process == self; }));
}

std::size_t Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  // An emulator says that there are none.
  return count != 0 ? count : ListedHandles();
}

std::size_t Threads() {
  const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  const DWORD process = GetCurrentProcessId();
  std::size_t count = 0;
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread)) {
    if (thread.th32OwnerProcessID == process) ++count;
  }
  CloseHandle(all);
  return count;
}

double Seconds(const FILETIME& time) {
  constexpr double kTick = 1e-7;
  return kTick * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
}

}  // namespace

ProcessFigures FiguresOfThisProcess() { return {BytesInAllHeaps(), Handles(), Threads()}; }

double ProcessorSeconds() {
  FILETIME begun{};
  FILETIME ended{};
  FILETIME inSystem{};
  FILETIME inProgram{};
  GetProcessTimes(GetCurrentProcess(), &begun, &ended, &inSystem, &inProgram);
  return Seconds(inSystem) + Seconds(inProgram);
}

#include "built/ProcessFigures.h"

#include <vector>

#include "SystemApi.h"
// The list of threads builds on the system's own header.
#include <tlhelp32.h>

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

std::size_t Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
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

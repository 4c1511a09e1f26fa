#include "built/ProcessFigures.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>
#include <time.h>

namespace {

std::size_t EntriesOf(const char* directory) {
  const std::filesystem::directory_iterator entries(directory);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

ProcessFigures FiguresOfThisProcess() {
  const struct mallinfo2 heap = mallinfo2();
  return {heap.uordblks + heap.hblkhd, EntriesOf("/proc/self/fd"), EntriesOf("/proc/self/task")};
}

double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

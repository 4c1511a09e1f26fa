#include "kernel/common/KernelLog.h"

#include <cstdlib>
#include <fstream>

namespace kernel {

void AppendToKernelLog(const std::string& line) {
  const char* path = std::getenv("QZ_KERNEL_LOG");
  if (path == nullptr || *path == '\0') return;
  std::ofstream file(path, std::ios::app | std::ios::binary);
  file << line << '\n';
}

}  // namespace kernel

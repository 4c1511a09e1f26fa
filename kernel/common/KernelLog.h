#pragma once

#include <string>

namespace kernel {

// Appends one line to the file that the environment variable QZ_KERNEL_LOG names; without that
// variable, and when the file cannot be opened, nothing happens. The file is open only during the
// call, so an exception elsewhere never leaves it open.
void AppendToKernelLog(const std::string& line);

}  // namespace kernel

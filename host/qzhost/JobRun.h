#pragma once

#include <string>
#include <vector>

#include "host/qzhost/AddIn.h"
#include "host/qzhost/AddInRun.h"
#include "host/qzhost/ProgressDisplay.h"

namespace host {

/// The job directory at `path` in the system's spelling, full, with a trailing separator. Throws
/// CommandError when there is none.
std::string OpenJobDirectory(const std::string& path);

/// Calls an operation that takes a job directory, the progress object and its flag.
Outcome RunJobOperation(const AddIn& addIn, const char* name, const std::string& directory,
                        ProgressDisplay& progress);

/// The first of these files of the directory that is there and cannot be written, or the directory;
/// empty when all can.
std::string UnwritablePlace(const std::string& directory, const std::vector<std::string>& names);

/// Why a flag is false: what came out of the add-in, the kernel's last error, the input that cannot
/// be read, the place that cannot be written, or that nobody says. The last two empty for none.
Verdict ExplainFalseFlag(const Outcome& outcome, const std::vector<std::string>& kernelErrors,
                         const std::string& unreadable, const std::string& unwritable);

}  // namespace host

#pragma once

#include <vector>

#include "built/BuiltJobs.h"

/// The same operations on as much as takes the kernel a noticeable time; or on the files of the
/// operation's own directory in the one that the environment variable QZ_LONG_JOBS names.
std::vector<BuiltJob> LargeJobs();

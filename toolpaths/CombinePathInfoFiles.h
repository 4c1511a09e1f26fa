#pragma once

#include "MfcApi.h"

/// Gathers the per-path files "TmpPathInfo%d.tmp", numbered from 0 up to the first gap, of the
/// working directory (which ends in a backslash) into "BinaryPaths.tmp" there.
/// False when a file cannot be opened, a per-path file is shorter than its fixed fields, its tool
/// is not one of the three or has no pieces, there is no memory, or the output cannot be written;
/// what was written so far stays on disk.
bool CombinePathInfoFiles(CString workingDirectory);

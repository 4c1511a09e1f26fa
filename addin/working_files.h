#pragma once

#include "MfcApi.h"

/// Whether the host sees a file of that full or relative path.
bool WorkingFileExists(const CString& path);

/// Removes the output that a run is about to make, when there is one: what an earlier job left must
/// not be taken for its result. Nothing is reported when it cannot be removed.
void RemoveStaleOutput(const CString& path);

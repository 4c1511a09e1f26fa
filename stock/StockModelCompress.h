#pragma once

#include "MfcApi.h"

class UIDlgKernel;

/// Stores a stock again at another compression tolerance: the kernel sweeps it with one tool that
/// stands still, ten tolerances above the highest vertex, and writes what is left, which is all.
/// `workDir` has its trailing backslash; `inputName` is relative to it; `tolerance` in the host's
/// unit. "BinaryPaths.tmp" and "BinaryPaths.txt" in `workDir` are overwritten and stay.
///
/// `outputName` is taken as it stands, and a relative one has two meanings: what lies there is
/// removed, and looked for at the end, in the directory that is current at the call; the output is
/// made in `workDir`.
///
/// True when no kernel error was caught and there is a file of that name at the end, whatever the
/// kernel put into it. A kernel error removes the output. What is thrown and is not
/// UIExceptionKernel passes on, with the current directory put back and the kernel freed; files
/// stay as they are then. `callbacks` is the caller's and not null.
bool StockModelCompress(CString workDir, CString inputName, CString outputName,
                        UIDlgKernel* callbacks, double tolerance);

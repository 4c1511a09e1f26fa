#pragma once

#include "MfcApi.h"

class UIDlgKernel;

/// Cuts the paths of the per-path files in `workDir` (with its trailing backslash) out of
/// "StockModelInput.tmp" there and leaves "StockModelOutput.tmp".
///
/// True when no kernel error was caught and the output exists. Without a stock nothing is run and
/// nothing removed, and an output left there by an earlier job makes the result true.
/// A kernel error removes the output. What is thrown and is not UIExceptionKernel passes on, with
/// the current directory put back and the kernel freed; files stay as they are then.
/// `callbacks` is the caller's and not null.
bool SweepMultipleToolpathsFromStock(CString workDir, UIDlgKernel* callbacks);

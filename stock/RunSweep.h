#pragma once

#include "MfcApi.h"

class UIDlgKernel;

/// One run of the kernel's sweep. File names may be relative to `workDir`.
struct SweepRun {
  CString workDir;
  CString inputStock;   // a binary surface file
  CString outputStock;  // the binary surface file to be made
  CString paths;        // the interchange file, by its full path
  /// Whether five-axis buffering is switched off in front of the run; otherwise it is left alone.
  bool withoutBuffering;
};

/// Makes `workDir` current, has the kernel sweep the paths through the input stock and puts the
/// directory back. A run that cannot begin, because there is no memory for kernel or channel or the
/// stock does not load, ends without an error and without an output.
///
/// False when the kernel reported a fatal error or the user stopped it; the output is removed then.
/// What is thrown and is not UIExceptionKernel passes on, with the current directory put back and
/// the kernel freed; files stay as they are then.
bool RunSweep(const SweepRun& run, UIDlgKernel* callbacks);

#pragma once

#include "MfcApi.h"

/// Converts "BinaryPaths.tmp" of the working directory (which ends in a backslash) into
/// "BinaryPaths.txt" there, a commented line for each value, and checks it on the way.
/// True when nothing was found wrong and every line is written. Otherwise the lines in front of the
/// fault stay on disk; without a binary file no text file is made.
bool DumpBinaryPathsText(CString workingDirectory);

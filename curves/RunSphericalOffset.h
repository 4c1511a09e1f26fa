#pragma once

/// Has the kernel offset a binary surface file by a ball; the result goes to `outputFile`, which is
/// created at once. `distance` in the host's unit; `unscaledValue` goes to the kernel as it is. The
/// result is that of RunOnLoadedSurface; no file is removed, whatever happens. Other exceptions
/// pass through.
unsigned char RunSphericalOffset(const char* inputFile, const char* outputFile, double distance,
                                 double unscaledValue);

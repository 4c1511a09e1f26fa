#pragma once

/// Has the kernel compute the silhouette of a binary surface file spun about the X axis; the curves
/// go to `outputFile`, which is created at once. `mode` 0 makes a file of plain curves, 1 the tree
/// variant. `distance` in the host's unit. The result is that of RunOnLoadedSurface; no file is
/// removed, whatever happens. Other exceptions pass through.
unsigned char RunSpinSilhouette(const char* inputFile, int mode, const char* outputFile,
                                double distance);

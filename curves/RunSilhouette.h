#pragma once

/// Has the kernel write the silhouette of one binary surface file into a file of curves, with the
/// host's temporary directory as the current one: there relative names are looked for. `distance`
/// in the host's unit.
///
/// 1 when the kernel has run, whatever it has written; also when there was no memory for the kernel
/// object, and when it reported a fatal error, which removes the output. 0 when the user stopped
/// it; the output then stays as it is. Other exceptions pass through, with the current directory
/// put back.
unsigned char RunSilhouette(char* inputFile, char* outputFile, double distance);

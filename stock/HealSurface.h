#pragma once

/// Has the kernel heal one binary surface file into another. `tolerance` in the host's unit; both
/// files by their full paths, read and written by the kernel alone.
///
/// `*succeeded` is false at once and true when the kernel has returned, whatever it has made of the
/// output, and also when there was no memory for the kernel object and nothing was run. It stays
/// false when the user stopped the kernel or the kernel reported a fatal error. Any other exception
/// passes on, with the kernel object freed and `*succeeded` false.
void HealSurface(double tolerance, char* inputFile, char* outputFile, bool* succeeded);

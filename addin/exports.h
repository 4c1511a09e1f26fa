#pragma once

#include "MfcApi.h"

struct HostProgress;

// What the host calls by name. All plain, undecorated names.

extern "C" {

/// The version of the host's add-in protocol: always 1500.
int m_version();

/// Sets the two flag bytes at the head of the host's post_args, 1 and 0. Returns 0.
int m_main();

/// Cuts the toolpaths of a working directory out of the stock there. `workDir` ends in a backslash;
/// `host` must not be null. `*succeeded` is false until the operation has succeeded; it is the only
/// report. An exception that is none of the kernel's passes through, with `*succeeded` false.
void qztutlSweepMultipleToolpathsFromStock(CString workDir, HostProgress* host, bool* succeeded);

/// Colours the part of a working directory by its distance from the stock there. Arguments and
/// report as above; the flag says little of the comparison itself (see SweepPartStockCompare).
void qztutlSweepPartStockCompare(CString workDir, HostProgress* host, bool* succeeded);

/// Stores a stock again at another compression tolerance (in the host's unit). `inputName` is
/// relative to `workDir`, `outputName` is taken as it stands. Otherwise as above.
void qztutlStockModelCompress(CString workDir, CString inputName, CString outputName,
                              HostProgress* host, double tolerance, bool* succeeded);

/// Keeps only the facets of the given colours (`colourCount` host colour numbers). The output is
/// created before the input is opened. `*succeeded` is false until the input has been played to its
/// end; an output that cannot be written does not show there.
void qztutlFilterStockByColor(char* inputFile, char* outputFile, unsigned short colourCount,
                              unsigned char* colours, bool* succeeded);

/// Heals one binary surface file into another. `*succeeded` is false until the kernel has returned,
/// and stays so after the user's stop or a fatal kernel error; whether there is an output is not
/// looked at.
void qztutl_heal(double tolerance, char* inputFile, char* outputFile, bool* succeeded);

// Outlines and offsets. The box (lower and upper corner, three doubles each) is the extent of the
// caller's geometry; box and input file are moved during the run when they lie far from the origin
// or need scaling, and moved back, which may leave the last bits different. `*result` is 0 until
// the kernel has run; it says little of the output (see the runners in curves/). What passes
// through the run leaves it 0, and box and input where they are then.

/// The silhouette of a binary surface file along Z, as a file of curves in the tree variant.
/// Relative names are looked for in the host's temporary directory. 0 means that the user stopped
/// the kernel; a kernel error is 1 without an output.
void qztutl_silbndy(char* inputFile, char* outputFile, double distance, double* boxMin,
                    double* boxMax, unsigned char* result);

/// The silhouette of a binary surface file spun about the X axis, as a file of curves: `mode` 0
/// plain, 1 the tree variant. 0 when the input does not load, or the user stopped that.
void qztutlSpinSilBndy(const char* inputFile, int mode, const char* outputFile, double distance,
                       double* boxMin, double* boxMax, unsigned char* result);

/// The offset of one binary surface file, as another. `unscaledValue` reaches the kernel as it is.
/// 0 when the input does not load, or the user stopped that.
void qztutlSphericalOffsetTris(const char* inputFile, const char* outputFile, double distance,
                               double unscaledValue, double* boxMin, double* boxMax,
                               unsigned char* result);
}

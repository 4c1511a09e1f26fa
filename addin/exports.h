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
}

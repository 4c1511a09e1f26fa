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
}

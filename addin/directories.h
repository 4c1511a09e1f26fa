#pragma once

#include "MfcApi.h"

/// Where the diagnostic ("TmpSave") copies of a job's working files go, and under which names.

/// The directory that the host's registry names for diagnostic copies, as it stands there. False,
/// and `directory` untouched, when none is named.
bool GetStockDataDirectory(CString& directory);

/// The same with a trailing backslash, and the working directory in its place when none is named.
CString StockDataDirectoryFor(const CString& workDir);

/// What a job's copies are called in front, so that jobs that share a directory do not overwrite
/// one another: the last component of the working directory, its last character made an underscore
/// ("C:\Jobs\Part7\" gives "Part7_").
CString SavePrefix(const CString& workDir);

/// Directory and prefix together: a copy's name follows directly.
CString SaveCopyBase(const CString& workDir);

/// Copies `source` over `destination`; both are full paths. True when the copy was made.
bool CopyOver(const CString& source, const CString& destination);

/// The same when the host sees `source` at all. True when a copy was made; a job does not fail for
/// one that could not be made.
bool SaveCopy(const CString& source, const CString& destination);

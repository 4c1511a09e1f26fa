#pragma once

// The host's core library: registry, file and text services that the add-in imports.

#include "MfcApi.h"
#include "platform/Export.h"
#include "platform/SystemTypes.h"

#ifndef QZCORE_API
#define QZCORE_API QZ_IMPORT
#endif

/// Fills `key` (at least 260 bytes, zeroed by the caller) with the host's own registry key path.
QZCORE_API void get_REG_KEY(char* key);

/// Opens a registry key. `parent` null means the host's own hive. Returns 1 on success; the key is
/// then the caller's until RegClose.
QZCORE_API char RegOpen(CString path, HKEY* key, HKEY parent, unsigned long access);

/// Reads a text value. `*size` holds the capacity of `value` on entry. Returns 1 when it was read.
QZCORE_API char GetStringValue(HKEY key, const char* name, char* value, unsigned long* size);

QZCORE_API char RegClose(HKEY key);

/// The host's temporary directory, with a trailing separator.
QZCORE_API CString GetTempDirectory();

/// True when lengths are in millimetres, false when they are in inches.
QZCORE_API bool IsMetric();

/// Non-zero when the file exists. The add-in always passes 0 as `flag`.
QZCORE_API char file_exists(const char* path, char flag);

/// Tracked file functions: every open stream is known with the source unit and line that opened it.
/// Null when the file cannot be opened; the stream is the caller's until m_fclose.
QZCORE_API FILE* m_fopen(const char* sourceUnit, int line, const char* path, const char* mode);

/// Like m_fopen with directory and name apart; a name that is a full path is taken as it stands.
/// `status` receives the outcome of the open. Not every host writes it on success, so callers set
/// it true beforehand.
QZCORE_API FILE* m_fopen_hl(const char* sourceUnit, int line, const char* directory,
                            const char* name, const char* mode, bool* status);

QZCORE_API void m_fclose(const char* sourceUnit, int line, FILE* stream);

/// Empty the line where the host prompts and the area where it writes text.
QZCORE_API void clearprompt();
QZCORE_API void cleartext();

/// Argument strings of the add-in protocol, 256 bytes each.
extern QZCORE_API char post_args[][256];

/// The host's tolerance, in its current length unit.
extern QZCORE_API double tol;

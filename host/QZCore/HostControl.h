#pragma once

// What the host's executable sets and asks in its core library. No add-in sees this.

#include "platform/QZCore.h"

QZCORE_API void SetHostMetric(bool metric);

/// `tolerance` in the host's current length unit.
QZCORE_API void SetHostTolerance(double tolerance);

/// Makes `directory` the value "Enable Stock Model Data Directory" of this process, whatever the
/// registry says. Null or empty: the registry's own value again.
QZCORE_API void OverrideStockDataDirectory(const char* directory);

/// That value: what was set here, else the registry's; empty when there is none.
QZCORE_API CString StockDataDirectory();

/// Called when the prompt line and the text area are to be cleared; null for none.
QZCORE_API void SetClearHandlers(void (*prompt)(), void (*text)());

/// Streams that m_fopen and m_fopen_hl opened and m_fclose has not closed.
QZCORE_API int OpenStreamCount();

/// One line for each open stream, oldest first: "UNIT:LINE PATH (MODE)". Then one line for each
/// m_fclose of a stream that was not open: "UNIT:LINE closed a stream that is not open".
QZCORE_API CString OpenStreamReport();

/// Closes and forgets the streams that are open on the file of this path, spelled as it was when
/// they were opened.
QZCORE_API void CloseStreamsOn(const char* path);

#pragma once

// The raw entry hook of an MFC extension library; to be included by one source of the library only.

#include <afxdllx.h>

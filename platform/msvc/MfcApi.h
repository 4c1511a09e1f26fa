#pragma once

// The vendor's MFC; narrow characters, as the build defines neither UNICODE nor _UNICODE.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <afxext.h>
#include <afxwin.h>

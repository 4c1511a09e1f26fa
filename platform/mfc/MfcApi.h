#pragma once

// What the add-in and its host use of MFC, for compilers that come without it. Includes no library
// header beyond the compiler's own.

#include "CString.h"
#include "ExtensionModule.h"

#pragma once

// MFC's own part of the entry, which runs before DllMain. It defines functions and objects, so that
// one source of a module includes it, and builds on the class library's other headers: the order of
// the two matters.

// clang-format off
#include "MfcApi.h"
#include <afxdllx.h>
// clang-format on

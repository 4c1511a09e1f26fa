#pragma once

// The two services that the host's executable itself exports.

#include "platform/Export.h"

#ifndef HOSTEXE_API
#define HOSTEXE_API QZ_IMPORT
#endif

/// True when the key with this code is pressed. The add-in asks only for 27, Escape.
HOSTEXE_API bool KeyPress(short code);

/// Replaces the text of the host's status bar.
HOSTEXE_API void UpdateStatusBarText(const char* text);

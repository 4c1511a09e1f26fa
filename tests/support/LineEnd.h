#pragma once

namespace support {

/// What ends a line in the system's text files.
extern const char* const kLineEnd;

}  // namespace support

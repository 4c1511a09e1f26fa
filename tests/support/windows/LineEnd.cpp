#include "support/LineEnd.h"

namespace support {

const char* const kLineEnd = "\r\n";

}  // namespace support

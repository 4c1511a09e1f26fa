#include "support/LineEnd.h"

namespace support {

const char* const kLineEnd = "\n";

}  // namespace support

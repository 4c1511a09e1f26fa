#pragma once

#include "formats/ToolpathRecords.h"
#include "formats/programs/JsonFields.h"

namespace formats {

// The tool that an entry's "kind" and the members that belong to it describe; lengths are
// multiplied by `scale`. Throws JsonFault.
Tool ReadToolOfKind(JsonFields& fields, double scale);

}  // namespace formats

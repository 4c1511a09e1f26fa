#pragma once

#include "formats/ToolpathRecords.h"
#include "formats/programs/JsonFields.h"
#include "formats/programs/LengthScale.h"

namespace formats {

// The tool that an entry's "kind" and the members that belong to it describe; lengths are
// turned by `scale`. Throws JsonFault.
Tool ReadToolOfKind(JsonFields& fields, const LengthScale& scale);

}  // namespace formats

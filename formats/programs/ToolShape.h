#pragma once

#include <string>

#include "formats/ToolpathRecords.h"

namespace formats {

// What keeps the parameters from making a tool, as one line that begins with the parameter's name;
// empty when nothing does. What is asked of each parameter stands in docs/tools.md. An undercut
// tool is judged by its pieces (UndercutPieces).
std::string FaultOf(const ConvexTool& tool);
std::string FaultOf(const CustomTool& tool);

}  // namespace formats

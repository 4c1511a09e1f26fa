#pragma once

#include "formats/ToolpathRecords.h"

namespace formats {

// The undercut tool as a profile of pieces: per-path files of undercut tools lose their tool on the
// way into the interchange file, so that such tools travel as custom ones. From the tip up: the
// regular profile up to its widest height (its taper height, or the top of its corner arc when that
// is 0), the flip profile upside down, the arm up to its height. A profile that is not used is a
// flat disc. Upper bevels are left out: nothing of the head lies above the widest height. Throws
// std::invalid_argument with one line for a tool that has no such profile.
CustomTool UndercutPieces(const UndercutTool& tool);

}  // namespace formats

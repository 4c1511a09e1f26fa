#pragma once

#include "formats/ToolpathRecords.h"

namespace formats {

// The undercut tool as a profile of pieces: per-path files of undercut tools lose their tool on the
// way into the interchange file, so that such tools travel as custom ones. The head's lower half is
// the regular profile, its upper half the flip profile upside down, each cut where it is widest: at
// its taper height or, without one, where its corner arc ends. The arm follows, up to its height.
// In place of a half that is not in use the head is flat. Upper bevels lie above the cut and are
// left out. Throws std::invalid_argument with one line for a tool that has no such profile.
CustomTool UndercutPieces(const UndercutTool& tool);

}  // namespace formats

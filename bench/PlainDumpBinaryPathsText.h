#pragma once

#include <string>

/// The text form's converter with one fread and one fprintf a line and stdio's own buffers, for
/// 3-axis and 5-axis paths with convex tools. Only for comparison.
bool PlainDumpBinaryPathsText(const std::string& directory);

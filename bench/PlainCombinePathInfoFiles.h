#pragma once

#include <string>

/// The combiner with one fread and one fwrite a field or record and stdio's own buffers, for one
/// path with a convex tool. Only for comparison.
bool PlainCombinePathInfoFile(const std::string& directory);

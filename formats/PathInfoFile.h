#pragma once

#include <string>

#include "formats/ToolpathRecords.h"

namespace formats {

// A per-path file ("TmpPathInfo%d.tmp"): one path with exactly one cut. Throws FileError, also for
// what the add-in's combiner lets through although no sweep can use it or its reading is a guess: a
// path type other than 1 and 2, no position at all, a last position cut short, a negative number of
// custom pieces.
PathRecord ReadPathInfoFile(const std::string& path);

// Throws FileError, also for a record that the file cannot hold: a colour outside 0..255, a path
// type other than 1 and 2, more or less than one cut, a cut without positions or with part of one,
// a custom tool without pieces.
void WritePathInfoFile(const std::string& path, const PathRecord& record);

}  // namespace formats

#pragma once

#include <string>

/// The yardstick for healing: joins all vertices closer than `tolerance` through a hash grid of
/// that spacing, drops facets that lose a corner, and does nothing else. File to file; false when a
/// file cannot be read or written.
bool PlainWeld(double tolerance, const std::string& inputFile, const std::string& outputFile);

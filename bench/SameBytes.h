#pragma once

#include <string>

/// Whether two files have the same contents; false when one of them cannot be opened.
bool SameBytes(const std::string& a, const std::string& b);

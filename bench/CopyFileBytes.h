#pragma once

#include <string>

/// Copies a file in blocks of a mebibyte, without stdio's buffers: what no program that reads and
/// writes the same bytes can do much better.
bool CopyFileBytes(const std::string& from, const std::string& to);

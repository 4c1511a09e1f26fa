#pragma once

// Paths as texts and as the standard library's own. Texts are in the system's code page, as all
// that host and add-in give each other; the library's conversion takes them for something else on
// Windows.

#include <filesystem>
#include <string>

std::filesystem::path PathFromText(const std::string& text);

/// A character that the code page has not becomes a question mark.
std::string TextFromPath(const std::filesystem::path& path);

#include "platform/PathText.h"

std::filesystem::path PathFromText(const std::string& text) { return text; }

std::string TextFromPath(const std::filesystem::path& path) { return path.string(); }

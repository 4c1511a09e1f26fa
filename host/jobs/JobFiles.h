#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace host {

inline constexpr const char* kStockFile = "StockModelInput.tmp";
inline constexpr const char* kResultFile = "StockModelOutput.tmp";

/// "TmpPathInfo%d.tmp"
std::string PathFileName(std::int64_t number);

/// Files of a job in the directory, sorted: what a new job would stand beside. Empty when there is
/// no such directory. Throws formats::FileError when it cannot be listed.
std::vector<std::filesystem::path> JobFilesIn(const std::filesystem::path& directory);

/// Those of them that a new job takes the place of or that would no longer belong to it: the stock,
/// every per-path file whatever its number, the result of a sweep and that of a compare.
std::vector<std::filesystem::path> ReplacedFilesIn(const std::filesystem::path& directory);

}  // namespace host

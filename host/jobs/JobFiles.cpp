#include "host/jobs/JobFiles.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "formats/FileError.h"
#include "platform/PathText.h"

namespace host {

namespace {

constexpr std::array<std::string_view, 3> kReplaced = {kStockFile, kResultFile,
                                                       "CompareResults.iff"};
constexpr std::array<std::string_view, 2> kKept = {"BinaryPaths.tmp", "BinaryPaths.txt"};

bool IsPathFile(std::string_view name) {
  constexpr std::string_view kBefore = "TmpPathInfo";
  constexpr std::string_view kAfter = ".tmp";
  if (name.size() <= kBefore.size() + kAfter.size() || !name.starts_with(kBefore) ||
      !name.ends_with(kAfter)) {
    return false;
  }
  name.remove_prefix(kBefore.size());
  name.remove_suffix(kAfter.size());
  return name.find_first_not_of("0123456789") == std::string_view::npos;
}

template <typename Names>
bool Contains(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

template <typename Wanted>
std::vector<std::filesystem::path> FilesWhere(const std::filesystem::path& directory,
                                              Wanted wanted) {
  std::vector<std::filesystem::path> files;
  if (!std::filesystem::exists(directory)) return files;
  std::error_code error;
  std::filesystem::directory_iterator entry(directory, error);
  while (!error && entry != std::filesystem::directory_iterator()) {
    if (wanted(TextFromPath(entry->path().filename())) && !entry->is_directory(error)) {
      files.push_back(entry->path());
    }
    if (error) break;
    entry.increment(error);
  }
  if (error) {
    throw formats::FileError(TextFromPath(directory) + ": cannot be listed: " + error.message());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::string PathFileName(std::int64_t number) {
  return "TmpPathInfo" + std::to_string(number) + ".tmp";
}

std::vector<std::filesystem::path> JobFilesIn(const std::filesystem::path& directory) {
  return FilesWhere(directory, [](std::string_view name) {
    return IsPathFile(name) || Contains(kReplaced, name) || Contains(kKept, name);
  });
}

std::vector<std::filesystem::path> ReplacedFilesIn(const std::filesystem::path& directory) {
  return FilesWhere(directory, [](std::string_view name) {
    return IsPathFile(name) || Contains(kReplaced, name);
  });
}

}  // namespace host

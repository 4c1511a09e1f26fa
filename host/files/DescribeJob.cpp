#include "host/files/DescribeJob.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <vector>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "host/files/DescribeFile.h"
#include "host/files/FileKind.h"
#include "host/files/SameBytes.h"
#include "platform/PathText.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;
using Time = std::filesystem::file_time_type;

// The end of a diagnostic copy's name (a prefix made from the directory comes before it), and what
// it was copied from.
struct Copy {
  const char* name;
  const char* original;
};
constexpr Copy kCopies[] = {{"TmpSaveInputStock.iff", "StockModelInput.tmp"},
                            {"TmpSaveOutputStock.iff", "StockModelOutput.tmp"},
                            {"TmpSaveBinaryPaths.txt", "BinaryPaths.txt"},
                            {"TmpSaveBinaryPaths.tmp", "BinaryPaths.tmp"},
                            {"TmpSaveErrorCapture.txt", "ErrorCapture.txt"},
                            {"TmpSaveComparePart.iff", "PartFileToCompare.iff"},
                            {"TmpSaveCompareStock.iff", "StockModelOutput.tmp"},
                            // Not of the results: the add-in saves the part under this name.
                            {"TmpSaveCompareResults.iff", "PartFileToCompare.iff"}};

std::string OriginalOf(const std::string& name) {
  for (const Copy& copy : kCopies) {
    if (name.ends_with(copy.name)) return copy.original;
  }
  return "";
}

// Inputs first, then what is made of them, then everything else by name.
std::pair<int, int> Rank(const std::string& name) {
  if (name == "StockModelInput.tmp") return {0, 0};
  if (const auto number = PathNumber(name)) return {1, *number};
  if (name == "BinaryPaths.tmp") return {2, 0};
  if (name == "BinaryPaths.txt") return {3, 0};
  if (name == "StockModelOutput.tmp") return {4, 0};
  if (name == "ErrorCapture.txt") return {5, 0};
  return {OriginalOf(name).empty() ? 6 : 7, 0};
}

class Job {
 public:
  explicit Job(const std::string& directory) : m_directory(formats::LibraryPath(directory)) {
    std::error_code error;
    if (!std::filesystem::is_directory(m_directory, error)) {
      throw formats::FileError(directory + ": there is no such directory");
    }
    for (const auto& entry : std::filesystem::directory_iterator(m_directory, error)) {
      std::error_code ignored;
      if (!entry.is_regular_file(ignored)) continue;
      m_times[TextFromPath(entry.path().filename())] = entry.last_write_time(ignored);
    }
    if (error) throw formats::FileError(directory + ": cannot be read: " + error.message());
    while (Has(PathName(m_paths))) ++m_paths;
  }

  Json Describe() const {
    Json description = {{"job", TextFromPath(m_directory)}, {"paths", m_paths}};
    description["files"] = Json::array();
    for (const std::string& name : NamesInOrder()) {
      description["files"].push_back(DescribeOne(name));
    }
    return description;
  }

 private:
  static std::string PathName(int number) {
    return "TmpPathInfo" + std::to_string(number) + ".tmp";
  }

  // Not so a directory that only collects diagnostic copies.
  bool IsJob() const { return m_paths > 0 || Has("StockModelInput.tmp"); }

  bool Has(const std::string& name) const { return m_times.contains(name); }
  std::string Full(const std::string& name) const {
    return TextFromPath(m_directory / PathFromText(name));
  }

  std::vector<std::string> NamesInOrder() const {
    std::vector<std::string> names;
    for (const auto& [name, time] : m_times) names.push_back(name);
    std::stable_sort(names.begin(), names.end(),
                     [](const std::string& a, const std::string& b) { return Rank(a) < Rank(b); });
    return names;
  }

  Json DescribeOne(const std::string& name) const {
    Json description;
    std::vector<std::string> remarks;
    const std::string original = OriginalOf(name);
    if (!original.empty() && Has(original)) {
      description = DescribeCopy(name, original, remarks);
    } else {
      description = DescribeReadable(name);
      remarks = ReasonsItIsStale(name, description);
    }
    description["stale"] = !remarks.empty();
    if (!remarks.empty()) description["remarks"] = remarks;
    return description;
  }

  Json DescribeReadable(const std::string& name) const {
    try {
      return DescribeFile(Full(name));
    } catch (const formats::FileError& error) {
      Json description = {{"file", Full(name)}, {"error", error.what()}};
      return description;
    }
  }

  Json DescribeCopy(const std::string& name, const std::string& original,
                    std::vector<std::string>& remarks) const {
    Json description = {{"file", Full(name)}, {"kind", "diagnostic copy"}, {"copy_of", original}};
    try {
      description["bytes"] = formats::FileSize(Full(name));
      if (!SameBytes(Full(name), Full(original))) remarks.push_back("differs from " + original);
    } catch (const formats::FileError& error) {
      description["error"] = error.what();
    }
    return description;
  }

  // The remark is made for the first of `sources` that is newer than the file.
  void CheckAge(const std::string& name, const std::vector<std::string>& sources,
                std::vector<std::string>& remarks) const {
    for (const std::string& source : sources) {
      if (!Has(source) || m_times.at(source) <= m_times.at(name)) continue;
      remarks.push_back("older than " + source);
      return;
    }
  }

  std::vector<std::string> PathNames() const {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(m_paths));
    for (int number = 0; number < m_paths; ++number) names.push_back(PathName(number));
    return names;
  }

  std::vector<std::string> ReasonsItIsStale(const std::string& name,
                                            const Json& description) const {
    std::vector<std::string> reasons;
    const auto number = PathNumber(name);
    if (number && *number >= m_paths) {
      reasons.push_back("takes no part: there is no " + PathName(m_paths));
    } else if (name == "BinaryPaths.tmp") {
      CheckAge(name, PathNames(), reasons);
      CheckPathCount(description, reasons);
    } else if (name == "BinaryPaths.txt" || name == "ErrorCapture.txt") {
      CheckAge(name, {"BinaryPaths.tmp"}, reasons);
    } else if (name == "StockModelOutput.tmp") {
      std::vector<std::string> sources = PathNames();
      sources.insert(sources.begin(), {"StockModelInput.tmp", "BinaryPaths.tmp"});
      CheckAge(name, sources, reasons);
    } else if (name == "CompareResults.iff") {
      CheckAge(name, {"PartFileToCompare.iff", "StockModelOutput.tmp"}, reasons);
    } else if (!OriginalOf(name).empty() && IsJob()) {
      reasons.push_back("the job has no " + OriginalOf(name));
    }
    return reasons;
  }

  // Paths taken away since leave no file behind whose age would tell.
  void CheckPathCount(const Json& description, std::vector<std::string>& reasons) const {
    if (!description.contains("paths")) return;
    const auto count = static_cast<int>(description["paths"].size());
    if (count == m_paths) return;
    reasons.push_back("holds " + std::to_string(count) + " paths, the job has " +
                      std::to_string(m_paths));
  }

  std::filesystem::path m_directory;
  std::map<std::string, Time> m_times;
  int m_paths = 0;
};

}  // namespace

Json DescribeJob(const std::string& directory) { return Job(directory).Describe(); }

}  // namespace host

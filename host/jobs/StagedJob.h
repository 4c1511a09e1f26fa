#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "formats/Mesh.h"
#include "formats/programs/ProgramPaths.h"

namespace host {

/// A job that is made beside its place and put there when it is complete. Until then, and after a
/// failure, the directory holds what it held before; the destructor takes away what was begun. All
/// functions throw formats::FileError.
class StagedJob {
 public:
  /// Makes the directory when it is not there.
  explicit StagedJob(const std::string& directory);
  ~StagedJob();
  StagedJob(const StagedJob&) = delete;
  StagedJob& operator=(const StagedJob&) = delete;

  void WriteStock(const formats::Mesh& stock);
  void AddPath(const formats::ProgramPath& path);

  /// Where each path, in the order of AddPath, comes to stand in the numbering: tool load by tool
  /// load, within one the rapids first. Cut surface takes the colour of the later path where two
  /// coincide, and a rapid away from a finished floor coincides with it without having cut it.
  std::vector<std::int64_t> Numbering() const;

  /// Takes away the files of the job before, then puts the new ones in place: the stock first and
  /// the path numbered 0 last, so that no path is ever found without its stock and an unfinished
  /// job has no paths. Returns the paths of the new files.
  std::vector<std::string> Place();

 private:
  struct Staged {
    std::int64_t load;
    bool rapid;
  };
  std::filesystem::path StagedPath(std::size_t index) const;
  template <typename Write>
  void Stage(const std::filesystem::path& staged, Write write);
  void MoveAwayOldFiles();
  void Move(const std::filesystem::path& from, const std::filesystem::path& to);
  void Undo() noexcept;

  struct Moved {
    std::filesystem::path from;
    std::filesystem::path to;
  };
  std::filesystem::path m_directory;
  std::filesystem::path m_madeDirectory;  // the topmost directory that was not there before
  std::filesystem::path m_staging;
  std::vector<Staged> m_paths;
  std::vector<Moved> m_moved;  // what Place has done so far
  bool m_placed = false;
};

}  // namespace host

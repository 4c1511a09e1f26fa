#include "host/jobs/StagedJob.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <system_error>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/PathInfoFile.h"
#include "host/jobs/JobFiles.h"
#include "platform/PathText.h"

namespace host {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fail(const fs::path& path, const std::string& what,
                       const std::error_code& error) {
  throw formats::FileError(TextFromPath(path) + ": " + what + ": " + error.message());
}

fs::path TopmostMissing(fs::path path) {
  fs::path missing;
  while (!path.empty() && !fs::exists(path)) {
    missing = path;
    if (path == path.parent_path()) break;
    path = path.parent_path();
  }
  return missing;
}

// A directory of a name that nobody else has. A job that was killed on its way leaves one behind.
fs::path MakeStaging(const fs::path& directory) {
  constexpr int kMostAttempts = 1000;
  std::error_code error;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    fs::path staging = directory / (".qzhost-new-job-" + std::to_string(attempt));
    if (fs::create_directory(staging, error)) return staging;
    if (error) break;
  }
  if (!error) error = std::make_error_code(std::errc::file_exists);
  Fail(directory, "cannot be written", error);
}

}  // namespace

StagedJob::StagedJob(const std::string& directory)
    : m_directory(fs::absolute(formats::LibraryPath(directory)).lexically_normal()) {
  if (!m_directory.has_filename()) m_directory = m_directory.parent_path();
  m_madeDirectory = TopmostMissing(m_directory);
  std::error_code error;
  fs::create_directories(m_directory, error);
  if (error) Fail(m_directory, "cannot be made", error);
  m_staging = MakeStaging(m_directory);
}

StagedJob::~StagedJob() {
  std::error_code ignored;
  if (!m_placed) Undo();
  fs::remove_all(m_staging, ignored);
  if (m_placed) return;
  // Takes only directories that are empty, so that nothing but what was made here goes.
  for (fs::path path = m_directory; !m_madeDirectory.empty(); path = path.parent_path()) {
    if (!fs::remove(path, ignored) || path == m_madeDirectory) return;
  }
}

fs::path StagedJob::StagedPath(std::size_t index) const {
  return m_staging / ("path" + std::to_string(index));
}

template <typename Write>
void StagedJob::Stage(const fs::path& staged, Write write) {
  const std::string name = TextFromPath(staged);
  try {
    write(name);
  } catch (const formats::FileError& error) {
    // The staged file's name would tell the user nothing.
    std::string message = error.what();
    const size_t found = message.find(name);
    if (found == std::string::npos) throw;
    throw formats::FileError(message.replace(found, name.size(), TextFromPath(m_directory)));
  }
}

void StagedJob::WriteStock(const formats::Mesh& stock) {
  Stage(m_staging / "stock",
        [&](const std::string& path) { formats::WriteBinarySurface(path, stock); });
}

void StagedJob::AddPath(const formats::ProgramPath& path) {
  Stage(StagedPath(m_paths.size()),
        [&](const std::string& file) { formats::WritePathInfoFile(file, path.record); });
  m_paths.push_back({path.load, path.rapid});
}

std::vector<std::int64_t> StagedJob::Numbering() const {
  std::vector<std::size_t> order(m_paths.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return std::pair(m_paths[a].load, !m_paths[a].rapid) <
           std::pair(m_paths[b].load, !m_paths[b].rapid);
  });
  std::vector<std::int64_t> numbers(m_paths.size());
  for (std::size_t place = 0; place < order.size(); ++place) {
    numbers[order[place]] = static_cast<std::int64_t>(place);
  }
  return numbers;
}

void StagedJob::Move(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (error) Fail(from, "cannot be moved", error);
  m_moved.push_back({from, to});
}

void StagedJob::MoveAwayOldFiles() {
  const fs::path away = m_staging / "old";
  std::error_code error;
  fs::create_directory(away, error);
  if (error) Fail(m_directory, "cannot be written", error);
  for (const fs::path& file : ReplacedFilesIn(m_directory)) Move(file, away / file.filename());
}

void StagedJob::Undo() noexcept {
  std::error_code ignored;
  for (auto moved = m_moved.rbegin(); moved != m_moved.rend(); ++moved) {
    fs::rename(moved->to, moved->from, ignored);
  }
}

std::vector<std::string> StagedJob::Place() {
  std::vector<std::size_t> staged(m_paths.size());
  const auto numbers = Numbering();
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    staged[static_cast<std::size_t>(numbers[index])] = index;
  }
  MoveAwayOldFiles();
  std::vector<fs::path> places = {m_directory / kStockFile};
  Move(m_staging / "stock", places.front());
  for (std::size_t number = 0; number < staged.size(); ++number) {
    places.push_back(m_directory / PathFileName(static_cast<std::int64_t>(number)));
  }
  for (std::size_t number = staged.size(); number-- > 0;) {
    Move(StagedPath(staged[number]), places[number + 1]);
  }
  std::vector<std::string> files;
  std::transform(places.begin(), places.end(), std::back_inserter(files), TextFromPath);
  m_placed = true;
  return files;
}

}  // namespace host

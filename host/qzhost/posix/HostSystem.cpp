#include "host/qzhost/HostSystem.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "TurnedPath.h"

namespace host {

namespace {

std::int64_t Nanoseconds(const timespec& time) {
  return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FileState StateOfFile(const std::string& path) {
  struct stat status;
  if (stat(TurnedPath(path.c_str()).c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return {};
  return {true, static_cast<std::uint64_t>(status.st_size), Nanoseconds(status.st_mtim),
          static_cast<std::uint64_t>(status.st_ino) * 31 +
              static_cast<std::uint64_t>(Nanoseconds(status.st_ctim))};
}

bool IsDirectory(const std::string& path) {
  struct stat status;
  return stat(TurnedPath(path.c_str()).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsWritableDirectory(const std::string& path) {
  return IsDirectory(path) && access(TurnedPath(path.c_str()).c_str(), W_OK | X_OK) == 0;
}

std::vector<std::string> FilesIn(const std::string& directory) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(TurnedPath(directory.c_str()).c_str()),
                                                   closedir);
  if (folder == nullptr) return names;
  while (const dirent* entry = readdir(folder.get())) {
    if (StateOfFile(directory + "/" + entry->d_name).exists) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string FullPath(const std::string& path) {
  const std::filesystem::path turned(TurnedPath(path.c_str()).c_str());
  return std::filesystem::absolute(turned).lexically_normal().string();
}

std::string ExecutableDirectory() {
  std::error_code error;
  const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
  return executable.parent_path().string() + "/";
}

std::uint64_t PeakMemory() {
  // Not from getrusage, which counts what the program held that started this one.
  std::ifstream status("/proc/self/status");
  std::string field;
  while (status >> field) {
    std::uint64_t kibibytes = 0;
    if (field == "VmHWM:" && status >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

unsigned long ProcessNumber() { return static_cast<unsigned long>(getpid()); }

void SetEnvironmentText(const std::string& name, const std::string& text) {
  setenv(name.c_str(), text.c_str(), 1);
}

std::string Utf8(const std::string& text) { return text; }

bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace host

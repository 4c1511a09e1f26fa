#include "kernel/heal/ReplaceFile.h"

#include <filesystem>
#include <system_error>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "platform/PathText.h"

namespace kernel {
namespace {

// A link that leads nowhere takes a name as well. What cannot be looked at is free: writing to it
// says why not.
bool IsTaken(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

// Gone with the object, unless it has got another name.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& beside) {
    for (int number = 0; m_path.empty() || IsTaken(m_path); ++number) {
      m_path = formats::LibraryPath(beside + "." + std::to_string(number) + ".tmp");
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;  // made of a text, it would need memory in the destructor
};

}  // namespace

void ReplaceFile(const std::string& path, const std::function<void(const std::string&)>& write) {
  const std::filesystem::path target = formats::LibraryPath(path);
  std::error_code error;
  if (std::filesystem::is_directory(target, error)) {
    throw formats::FileError(path + ": is a directory");
  }
  const TemporaryFile file(path);
  write(TextFromPath(file.Path()));
  std::filesystem::rename(file.Path(), target, error);
  if (error) throw formats::FileError(path + ": cannot be written: " + error.message());
}

}  // namespace kernel

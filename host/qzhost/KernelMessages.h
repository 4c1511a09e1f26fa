#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// What the kernel says during one operation. The kernel writes it into the file that the
/// environment variable QZ_KERNEL_LOG names; when nobody has named one, a temporary file serves,
/// which goes with this object.
class KernelMessages {
 public:
  KernelMessages();
  KernelMessages(const KernelMessages&) = delete;
  KernelMessages& operator=(const KernelMessages&) = delete;
  ~KernelMessages();

  /// Texts in the order they were said since this object was made.
  std::vector<std::string> Errors() const { return Lines("error: "); }
  std::vector<std::string> Warnings() const { return Lines("warning: "); }

 private:
  std::vector<std::string> Lines(const std::string& mark) const;

  std::string m_path;
  bool m_temporary;
  std::uint64_t m_sizeBefore;
};

}  // namespace host

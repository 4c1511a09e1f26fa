#include "host/qzhost/JobRun.h"

#include <cstdio>

#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostPaths.h"
#include "host/qzhost/HostSystem.h"
#include "platform/files.h"

namespace host {

std::string OpenJobDirectory(const std::string& path) {
  if (!IsDirectory(path)) throw CommandError(path + ": there is no such job directory");
  return FullPath(path + "/");
}

Outcome RunJobOperation(const AddIn& addIn, const char* name, const std::string& directory,
                        ProgressDisplay& progress) {
  using Operation = void(CString, HostProgress*, bool*);
  auto* const operation = addIn.Export<Operation>(name);
  const CString spelled(AddInDirectory(directory).c_str());
  Outcome outcome = CallAddIn([&](bool* succeeded) { operation(spelled, &progress, succeeded); });
  outcome.cancelled = progress.WasCancelled();
  return outcome;
}

std::string UnwritablePlace(const std::string& directory, const std::vector<std::string>& names) {
  if (!IsWritableDirectory(directory)) return directory;
  for (const std::string& name : names) {
    std::string path = directory + name;
    if (IsDirectory(path)) return path;
    if (!StateOfFile(path).exists) continue;
    FILE* stream = OpenStdFile(path.c_str(), "r+b");
    if (stream == nullptr) return path;
    std::fclose(stream);
  }
  return "";
}

Verdict ExplainFalseFlag(const Outcome& outcome, const std::vector<std::string>& kernelErrors,
                         const std::string& unreadable, const std::string& unwritable) {
  if (!outcome.stray.empty()) return {kFailed, "the add-in failed: " + outcome.stray};
  if (!kernelErrors.empty()) return {kFailed, kernelErrors.back()};
  if (!unreadable.empty()) return {kBadInput, unreadable};
  if (!unwritable.empty()) return {kFailed, unwritable + ": cannot be written"};
  return {kFailed, "the add-in reports failure and gives no reason"};
}

}  // namespace host

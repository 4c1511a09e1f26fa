#include "host/qzhost/ResultPlace.h"

#include "formats/OpenFile.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"

namespace host {

ResultPlace::ResultPlace(const std::string& path) : StagedFile(path) {
  if (IsDirectory(path)) throw CommandError(path + ": is a directory");
  Write([](const std::string& temporaryPath) { formats::OpenForWriting(temporaryPath); });
}

}  // namespace host

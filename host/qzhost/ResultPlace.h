#pragma once

#include <string>

#include "host/files/StagedFile.h"

namespace host {

/// The place where a result is to appear. Made sure of ahead of the run, which may take long: the
/// constructor throws CommandError or formats::FileError when nothing can be put there.
class ResultPlace : public StagedFile {
 public:
  explicit ResultPlace(const std::string& path);
};

}  // namespace host

#pragma once

#include <stdexcept>
#include <string>

#include "host/qzhost/ExitCode.h"

namespace host {

/// Ends a subcommand with one line of explanation. Any other std::exception that leaves a
/// subcommand (formats::FileError above all) counts as input that cannot be read.
class CommandError : public std::runtime_error {
 public:
  explicit CommandError(const std::string& message, ExitCode exitCode = kBadInput)
      : std::runtime_error(message), m_exitCode(exitCode) {}

  ExitCode Code() const { return m_exitCode; }

 private:
  ExitCode m_exitCode;
};

}  // namespace host

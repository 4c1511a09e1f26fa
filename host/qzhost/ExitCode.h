#pragma once

namespace host {

/// The exit codes speak of the result, not of the add-in's verdict.
enum ExitCode : int {
  kSuccess = 0,
  /// The add-in's flag is false, or a check that was asked for has failed.
  kFailed = 1,
  /// Wrong usage, or input that cannot be read.
  kBadInput = 2,
  kCancelled = 3,
  /// The add-in's flag is true, but there is no new, readable result.
  kNoResult = 4,
};

}  // namespace host

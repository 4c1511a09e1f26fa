#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "formats/meshes/MeshFile.h"
#include "host/qzhost/MeshCounts.h"
#include "host/qzhost/OperationRun.h"

namespace host {

/// An operation of the add-in that makes one surface file of another.
struct SurfaceOperation {
  std::string caption;  // over its progress
  std::string input;    // of any format
  std::string output;   // of any format; may be empty when nothing is to be written
  /// The result is only looked at.
  bool writeNothing = false;
  /// The add-in moves its input about: it gets a copy, and the result is not held against it.
  bool movesItsInput = false;
  /// Looks at the input before the call. May be left out.
  std::function<void(const formats::Mesh& input)> prepare;
  /// Calls the add-in with the paths of two binary surface files.
  OperationRun::Call call;
  /// Says why a result is not what the flag promises; empty when it is. May be left out.
  std::function<std::string(const formats::Mesh& input, const formats::Mesh& result)> doubt;
  /// Looks at a result that is no doubt one, while the user can still stop. May be left out.
  std::function<void(const formats::Mesh& input, const formats::Mesh& result)> inspect;
  /// Why a flag is false when the kernel has said nothing; empty for unknown. May be left out.
  std::function<std::string()> explain;
  /// The result's own vertex numbers count, whatever the input's are.
  bool countResultByNumber = false;
};

struct SurfaceResult {
  Outcome outcome;
  Verdict verdict;
  formats::MeshFormat inputFormat{};
  MeshCounts before;
  std::map<std::uint8_t, formats::ColourMeasures> coloursBefore;
  std::optional<MeshCounts> after;  // none without a readable result
  bool changed = false;  // the result is another mesh than the input, which was not moved about
  std::vector<std::string> losses;  // what the output's format could not hold
  std::vector<std::string> warnings;
};

/// Converts the input to a binary surface where it is none, has the add-in make its result in a
/// temporary directory, and puts that in the output's place in one go when it is complete: a file
/// that stands there is either kept or replaced whole. Nothing temporary stays. Escape and Ctrl-C
/// are listened to all the time. Throws CommandError or formats::FileError, before the add-in is
/// called, when the input cannot be read, the output cannot be written or is the input.
SurfaceResult RunSurfaceOperation(const SurfaceOperation& operation, const Options& options);

/// What every report of such an operation has.
void AddSurfaceResult(Report& report, const SurfaceOperation& operation,
                      const SurfaceResult& result, const Options& options);

}  // namespace host

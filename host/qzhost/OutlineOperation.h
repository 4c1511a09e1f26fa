#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "formats/curves/CurveMeasures.h"
#include "formats/meshes/MeshFile.h"
#include "host/qzhost/MeshSummary.h"
#include "host/qzhost/OperationRun.h"

namespace host {

/// An operation of the add-in that makes a file of curves of a surface file.
struct OutlineOperation {
  std::string caption;  // over its progress
  std::string input;    // of any mesh format
  std::string output;   // a drawing, or a binary curves file
  /// Calls the add-in with the paths of a binary surface file and of a binary curves file, and with
  /// the surface's box, which the add-in changes while it runs.
  std::function<void(const AddIn& addIn, char* input, char* output, formats::Box& box,
                     bool* succeeded)>
      call;
};

struct OutlineResult {
  Outcome outcome;
  Verdict verdict;
  formats::MeshFormat inputFormat{};
  MeshSummary input;
  std::optional<formats::CurvesMeasures> curves;  // none without a readable result
  std::string outputFormat;
  bool heightsLost = false;
  std::vector<std::string> warnings;
};

/// Has the add-in make its curves of a copy of the input in a temporary directory, and puts them,
/// or the drawing made of them, in the output's place in one go when they are complete. Nothing
/// temporary stays. Throws CommandError or formats::FileError, before the add-in is called, when
/// the input cannot be read, the output cannot be written or is the input.
OutlineResult RunOutlineOperation(const OutlineOperation& operation, const Options& options);

/// What every report of such an operation has.
void AddOutlineResult(Report& report, const OutlineOperation& operation,
                      const OutlineResult& result, const Options& options);

}  // namespace host

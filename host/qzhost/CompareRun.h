#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/CompareBandsFile.h"
#include "formats/Mesh.h"
#include "host/measure/DeviationStatistics.h"
#include "host/qzhost/AddIn.h"
#include "host/qzhost/AddInRun.h"
#include "host/qzhost/BandAreas.h"
#include "host/qzhost/KernelMessages.h"
#include "host/qzhost/ProgressDisplay.h"

namespace host {

/// What a comparison works on; a member is empty when its file is not there.
struct CompareInput {
  std::optional<formats::Mesh> part;
  std::optional<formats::Mesh> stock;
  std::optional<formats::CompareBands> bands;
};

/// Reads a job's files. One that is there must be readable: throws formats::FileError.
CompareInput ReadCompareInput(const std::string& directory);

/// The same files from an input that has all three. Throws formats::FileError.
void WriteCompareInput(const std::string& directory, const CompareInput& input);

struct CompareResult {
  Outcome outcome;
  Verdict verdict;
  formats::Mesh mesh;  // the part, coloured; empty without a readable result
  // With a result:
  std::optional<DeviationStatistics> statistics;
  std::vector<BandArea> bands;
};

/// Has the add-in compare what stands in the directory (full, with a trailing separator) and
/// measures the result. Its flag is not taken for a result: the add-in says true of a comparison
/// that failed.
CompareResult RunCompare(const std::string& directory, const CompareInput& input,
                         const AddIn& addIn, const KernelMessages& messages,
                         ProgressDisplay& progress);

}  // namespace host

#pragma once

#include <optional>
#include <string>

#include "host/qzhost/CompareRun.h"
#include "host/qzhost/Report.h"

namespace host {

/// Limits that a comparison is held against, lengths from 0 up.
struct CompareLimits {
  std::optional<double> gouge;
  std::optional<double> excess;
};

/// Bands, statistics and worst places, as text and for machines.
void AddComparison(Report& report, const CompareResult& result, const Options& options);

/// Turns a success into a failure when a limit is passed.
void JudgeLimits(const CompareLimits& limits, CompareResult& result);

/// The same figures as a table. Throws formats::FileError.
void WriteComparisonCsv(const std::string& path, const CompareResult& result);

}  // namespace host

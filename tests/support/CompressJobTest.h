#pragma once

#include <array>
#include <map>
#include <string>

#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace support {

/// A job that can be compressed: a stock "in.iff" of one facet, its highest vertex the second, an
/// old output "out.iff", and a kernel that answers with another single facet.
class CompressJobTest : public JobTest {
 protected:
  static constexpr double kTolerance = 0.25;

  CompressJobTest();

  void WriteInput(const std::string& bytes);

  /// The output's name as a host hands it over: its full path.
  CString OutputName() const { return WorkDir() + "out.iff"; }

  std::string InputBytes() const;
  std::string ResultBytes() const { return BinarySurfaceBytes(kernel.result); }
  /// The interchange file of a path whose two positions are `point`, metric.
  static std::string PathBytes(double tolerance, const std::array<double, 3>& point);
  /// That of the job, ten tolerances above its highest vertex.
  static std::string JobPathBytes() { return PathBytes(kTolerance, {4, 5, 8.5}); }
  /// Its text, as a file holds it.
  static std::string JobPathText();

  using Files = std::map<std::string, std::string>;
  Files FilesInJob() const { return FilesIn(InJob("")); }
  /// What they must be: the input alone; with the path and its text; and with an output.
  Files InputFile() const;
  Files InputAndPath() const;
  Files InputPathAnd(const std::string& output) const;

  ScriptedKernel kernel;
};

}  // namespace support

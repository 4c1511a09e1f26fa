#pragma once

#include <string>
#include <vector>

#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace support {

/// A job that can be swept: one path, a stock of a single facet, and a kernel that answers with
/// another single facet. Small, so that the whole order of effects can be read.
class SweepJobTest : public JobTest {
 protected:
  SweepJobTest();

  void WritePath(int number, const Path& path);
  void WriteStock(const Surface& surface);
  /// What an earlier job left as its result.
  void WriteStaleOutput();
  bool HasStaleOutput() const;

  /// The result's bytes as the kernel's answer gives them.
  std::string ExpectedOutput() const { return BinarySurfaceBytes(kernel.result); }

  ScriptedKernel kernel;
};

}  // namespace support

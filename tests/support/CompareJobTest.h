#pragma once

#include <map>
#include <string>

#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

namespace support {

/// A job that can be compared: a part and a stock of one facet each, two bands, an old result, and
/// a kernel that answers with another single facet. Copies go to "keep".
class CompareJobTest : public JobTest {
 protected:
  CompareJobTest();

  void WriteBands(const Bands& bands);
  void WriteInfo(const std::string& bytes);

  /// Whole files, as they must be.
  std::string PartBytes() const;
  std::string StockBytes() const;
  std::string ResultBytes() const { return BinarySurfaceBytes(kernel.result); }

  using Files = std::map<std::string, std::string>;
  /// The job's files: what it began with, and the result when it is not empty.
  Files JobFilesWith(const std::string& result) const;
  /// The copies: those of the inputs with the text of the bands, and, when wanted, the one that is
  /// made at the end.
  Files CopiesWith(const std::string& bandsText, bool last) const;

  ScriptedKernel kernel;

 private:
  std::string m_info;
};

/// The bands of the job, and their text.
Bands TwoBands();
std::string TwoBandsText();

}  // namespace support

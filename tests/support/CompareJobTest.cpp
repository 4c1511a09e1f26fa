#include "support/CompareJobTest.h"

namespace support {

CompareJobTest::CompareJobTest() {
  KeepCopiesApart();
  WriteWholeFile(InJob("PartFileToCompare.iff"), PartBytes());
  WriteWholeFile(InJob("StockModelOutput.tmp"), StockBytes());
  WriteWholeFile(InJob("CompareResults.iff"), "what an earlier job left");
  WriteBands(TwoBands());
  kernel.result = OneFacet(2, 9);
}

void CompareJobTest::WriteBands(const Bands& bands) { WriteInfo(CompareInfoBytes(bands)); }

void CompareJobTest::WriteInfo(const std::string& bytes) {
  m_info = bytes;
  WriteWholeFile(InJob("TmpCompareInfo.tmp"), bytes);
}

std::string CompareJobTest::PartBytes() const { return BinarySurfaceBytes(OneFacet(3, 1)); }

std::string CompareJobTest::StockBytes() const { return BinarySurfaceBytes(OneFacet(1, 5)); }

CompareJobTest::Files CompareJobTest::JobFilesWith(const std::string& result) const {
  Files files{{"PartFileToCompare.iff", PartBytes()},
              {"StockModelOutput.tmp", StockBytes()},
              {"TmpCompareInfo.tmp", m_info}};
  if (!result.empty()) files["CompareResults.iff"] = result;
  return files;
}

CompareJobTest::Files CompareJobTest::CopiesWith(const std::string& bandsText, bool last) const {
  Files files{{"Job1_TmpSaveComparePart.iff", PartBytes()},
              {"Job1_TmpSaveCompareStock.iff", StockBytes()},
              {"Job1_TmpSaveCompareInfo.txt", TextFileBytes(bandsText)}};
  // It goes by the name of the results and is the part.
  if (last) files["Job1_TmpSaveCompareResults.iff"] = PartBytes();
  return files;
}

Bands TwoBands() { return {7, 2, {3, 256}, {-12.25, 0.5}}; }

std::string TwoBandsText() {
  return "Stock model color 7\n"
         "Number of divisions 2\n"
         "Color[0] = 3\n"
         "Color[1] = 256\n"
         "Distance[0] =       -12.2500000000\n"
         "Distance[1] =         0.5000000000\n";
}

}  // namespace support

#include "stock/StockModelCompress.h"

#include "addin/working_files.h"
#include "stock/ReadHighestVertex.h"
#include "stock/RunSweep.h"
#include "toolpaths/DumpBinaryPathsText.h"
#include "toolpaths/TrackedFile.h"
#include "toolpaths/WriteSinglePointPaths.h"

namespace {

constexpr double kTolerancesAbove = 10.0;

// The input stays open when it cannot be read.
bool WriteHarmlessPath(const CString& workDir, double tolerance, TrackedFile* input) {
  double point[3];
  if (!input->IsOpen() || !ReadHighestVertex(input->Stream(), point)) return false;
  input->Close();
  point[2] += kTolerancesAbove * tolerance;
  return WriteSinglePointPaths(workDir, tolerance, point) && DumpBinaryPathsText(workDir);
}

}  // namespace

bool StockModelCompress(CString workDir, CString inputName, CString outputName,
                        UIDlgKernel* callbacks, double tolerance) {
  RemoveStaleOutput(outputName);
  // The verdict so far, which stands for the open as well unless the host writes the status.
  bool status = false;
  TrackedFile input(workDir, inputName, "rb", &status);
  if (WriteHarmlessPath(workDir, tolerance, &input) &&
      !RunSweep({workDir, inputName, outputName, workDir + "BinaryPaths.tmp", false}, callbacks)) {
    return false;
  }
  // Whatever came before: an old output that could not be removed makes a failure a success.
  return WorkingFileExists(outputName);
}

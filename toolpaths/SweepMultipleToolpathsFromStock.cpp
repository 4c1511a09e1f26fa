#include "toolpaths/SweepMultipleToolpathsFromStock.h"

#include "addin/directories.h"
#include "addin/working_files.h"
#include "stock/RunSweep.h"
#include "toolpaths/CombinePathInfoFiles.h"
#include "toolpaths/DumpBinaryPathsText.h"

namespace {

struct JobFiles {
  explicit JobFiles(const CString& workDir)
      : inputStock(workDir + "StockModelInput.tmp"),
        outputStock(workDir + "StockModelOutput.tmp"),
        pathsText(workDir + "BinaryPaths.txt"),
        paths(workDir + "BinaryPaths.tmp") {}

  CString inputStock;
  CString outputStock;
  CString pathsText;
  CString paths;
};

void SaveInputCopies(const JobFiles& files, const CString& copyBase) {
  SaveCopy(files.pathsText, copyBase + "TmpSaveBinaryPaths.txt");
  SaveCopy(files.paths, copyBase + "TmpSaveBinaryPaths.tmp");
  SaveCopy(files.inputStock, copyBase + "TmpSaveInputStock.iff");
}

}  // namespace

bool SweepMultipleToolpathsFromStock(CString workDir, UIDlgKernel* callbacks) {
  if (!CombinePathInfoFiles(workDir)) return false;
  if (!DumpBinaryPathsText(workDir)) return false;  // what does not convert is never swept

  const CString copyBase = SaveCopyBase(workDir);
  const JobFiles files(workDir);
  SaveInputCopies(files, copyBase);

  // Without a stock nothing is touched any more: a result of an earlier job stays and decides.
  if (!WorkingFileExists(files.inputStock)) return WorkingFileExists(files.outputStock);

  RemoveStaleOutput(files.outputStock);
  const bool withoutError =
      RunSweep({workDir, files.inputStock, files.outputStock, files.paths, true}, callbacks);
  SaveCopy(files.outputStock, copyBase + "TmpSaveOutputStock.iff");
  return withoutError && WorkingFileExists(files.outputStock);
}

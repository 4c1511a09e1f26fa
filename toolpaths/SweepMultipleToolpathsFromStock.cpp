#include "toolpaths/SweepMultipleToolpathsFromStock.h"

#include <memory>
#include <new>

#include "addin/CurrentDirectoryScope.h"
#include "addin/directories.h"
#include "callbacks/UIDlgKernel.h"
#include "callbacks/UIExceptionKernel.h"
#include "platform/IFSweep.h"
#include "platform/QZCore.h"
#include "platform/files.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"
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

bool Exists(const CString& path) { return file_exists(path, 0) != 0; }

void SaveInputCopies(const JobFiles& files, const CString& copyBase) {
  SaveCopy(files.pathsText, copyBase + "TmpSaveBinaryPaths.txt");
  SaveCopy(files.paths, copyBase + "TmpSaveBinaryPaths.tmp");
  SaveCopy(files.inputStock, copyBase + "TmpSaveInputStock.iff");
}

void RunPaths(IFSweep& sweep, SurfaceXferQZ& output, const JobFiles& files) {
  sweep.SetFiveAxisBufferingLevel(0);
  CString paths = files.paths;
  sweep.Run(&output, paths.GetBuffer(paths.GetLength()));
  paths.ReleaseBuffer();
}

// Ends early, without an error, when kernel or channel cannot be made or the stock does not load.
void SweepStock(std::unique_ptr<IFSweep>& sweep, std::unique_ptr<SurfaceXferQZ>& output,
                const JobFiles& files, UIDlgKernel* callbacks) {
  sweep.reset(new (std::nothrow) IFSweep(callbacks));
  if (sweep == nullptr) return;
  SurfaceTransfer* stock = sweep->OpenStockChannel();
  if (!LoadBinarySurface(files.inputStock, stock, 0, 0, nullptr)) return;
  output.reset(new (std::nothrow) SurfaceXferQZ(files.outputStock));
  if (output == nullptr) return;
  RunPaths(*sweep, *output, files);
  output.reset();
}

void DiscardOutput(SurfaceXferQZ* output, const JobFiles& files) {
  // Close first: it gives up the stream, without which Windows would not remove the file.
  if (output != nullptr) output->Close();
  RemoveStdFile(files.outputStock);
}

// False when a kernel error was caught.
bool RunKernel(const CString& workDir, const JobFiles& files, UIDlgKernel* callbacks) {
  // The channel outlives the kernel that writes into it; both go, and the directory is put back, on
  // every way out.
  std::unique_ptr<SurfaceXferQZ> output;
  const CurrentDirectoryScope inWorkDir(workDir);
  std::unique_ptr<IFSweep> sweep;
  try {
    SweepStock(sweep, output, files, callbacks);
    return true;
  } catch (const UIExceptionKernel&) {
    DiscardOutput(output.get(), files);
    return false;
  }
}

}  // namespace

bool SweepMultipleToolpathsFromStock(CString workDir, UIDlgKernel* callbacks) {
  if (!CombinePathInfoFiles(workDir)) return false;
  if (!DumpBinaryPathsText(workDir)) return false;  // what does not convert is never swept

  const CString copyBase = SaveCopyBase(workDir);
  const JobFiles files(workDir);
  SaveInputCopies(files, copyBase);

  // Without a stock nothing is touched any more: a result of an earlier job stays and decides.
  if (!Exists(files.inputStock)) return Exists(files.outputStock);

  if (Exists(files.outputStock)) RemoveStdFile(files.outputStock);
  const bool withoutError = RunKernel(workDir, files, callbacks);
  SaveCopy(files.outputStock, copyBase + "TmpSaveOutputStock.iff");
  return withoutError && Exists(files.outputStock);
}

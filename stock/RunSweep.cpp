#include "stock/RunSweep.h"

#include <memory>
#include <new>

#include "addin/CurrentDirectoryScope.h"
#include "callbacks/UIDlgKernel.h"
#include "callbacks/UIExceptionKernel.h"
#include "platform/IFSweep.h"
#include "platform/files.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"

namespace {

void SweepPaths(IFSweep& sweep, SurfaceXferQZ& output, const SweepRun& run) {
  if (run.withoutBuffering) sweep.SetFiveAxisBufferingLevel(0);
  CString paths = run.paths;
  sweep.Run(&output, paths.GetBuffer(paths.GetLength()));
  paths.ReleaseBuffer();
}

// Ends early, without an error, when kernel or channel cannot be made or the stock does not load.
void SweepStock(std::unique_ptr<IFSweep>& sweep, std::unique_ptr<SurfaceXferQZ>& output,
                const SweepRun& run, UIDlgKernel* callbacks) {
  sweep.reset(new (std::nothrow) IFSweep(callbacks));
  if (sweep == nullptr) return;
  SurfaceTransfer* stock = sweep->OpenStockChannel();
  if (!LoadBinarySurface(run.inputStock, stock, 0, 0, nullptr)) return;
  output.reset(new (std::nothrow) SurfaceXferQZ(run.outputStock));
  if (output == nullptr) return;
  SweepPaths(*sweep, *output, run);
  output.reset();
}

void DiscardOutput(SurfaceXferQZ* output, const SweepRun& run) {
  // Close first: it gives up the stream, without which Windows would not remove the file.
  if (output != nullptr) output->Close();
  RemoveStdFile(run.outputStock);
}

}  // namespace

bool RunSweep(const SweepRun& run, UIDlgKernel* callbacks) {
  // The channel outlives the kernel that writes into it; both go, and the directory is put back, on
  // every way out.
  std::unique_ptr<SurfaceXferQZ> output;
  const CurrentDirectoryScope inWorkDir(run.workDir);
  std::unique_ptr<IFSweep> sweep;
  try {
    SweepStock(sweep, output, run, callbacks);
    return true;
  } catch (const UIExceptionKernel&) {
    DiscardOutput(output.get(), run);
    return false;
  }
}

#include "stock/SweepPartStockCompare.h"

#include <memory>
#include <new>

#include "addin/directories.h"
#include "addin/working_files.h"
#include "callbacks/UIDlgKernel.h"
#include "callbacks/UIExceptionKernel.h"
#include "platform/IFSweep.h"
#include "stock/CompareBands.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"
#include "stock/WriteCompareBandsText.h"
#include "toolpaths/TrackedFile.h"

namespace {

struct JobFiles {
  explicit JobFiles(const CString& directory)
      : savePrefix(SavePrefix(directory)),
        saveDirectory(StockDataDirectoryFor(directory)),
        workDir(directory),
        part(directory + "PartFileToCompare.iff"),
        stock(directory + "StockModelOutput.tmp"),
        results(directory + "CompareResults.iff") {}

  CString Copy(const char* name) const { return saveDirectory + savePrefix + name; }

  CString savePrefix;
  CString saveDirectory;
  CString workDir;
  CString part;
  CString stock;
  CString results;
};

// Saves the inputs' copies, the bands' as a text, and reads the bands.
bool TakeInputs(const JobFiles& files, CompareBands* bands) {
  CopyOver(files.part, files.Copy("TmpSaveComparePart.iff"));
  // One status for the last copy and both opens, looked at behind the second: with a host that
  // writes it at every open neither the copies nor the text matter, with one that writes it only
  // when an open fails the copy of the stock and the text do.
  bool status = CopyOver(files.stock, files.Copy("TmpSaveCompareStock.iff"));
  // Opened, and thereby emptied, before it is known whether there will be anything to write.
  TrackedFile text(files.saveDirectory, files.savePrefix + "TmpSaveCompareInfo.txt", "w", &status);
  TrackedFile info(files.workDir, "TmpCompareInfo.tmp", "rb", &status);
  if (!status || info.Stream() == nullptr) return false;

  if (!ReadCompareBands(info.Stream(), bands)) return false;
  info.Close();
  if (!HaveHostColours(*bands)) return false;
  if (text.Stream() != nullptr) WriteCompareBandsText(*bands, text.Stream());
  return true;
}

bool PlayAndCompare(IFSweep& sweep, const JobFiles& files, const CompareBands& bands,
                    SurfaceTransfer* results) {
  SurfaceTransfer* part = sweep.OpenCompareSurfaceChannel();
  SurfaceTransfer* stock = sweep.OpenCompareSurfaceChannel();
  if (!LoadBinarySurface(files.part, part, 0, 0, nullptr)) return false;
  if (!LoadBinarySurface(files.stock, stock, 0, 0, nullptr)) return false;
  sweep.Compare(part, stock, bands.stockColour, bands.divisions, bands.colours.get(),
                bands.distances.get(), results);
  return true;
}

bool RunCompare(const JobFiles& files, const CompareBands& bands, UIDlgKernel* callbacks) {
  // The channel creates its file now, and it outlives the kernel that writes into it. After an
  // error it is not closed: what it holds is given up.
  const std::unique_ptr<SurfaceXferQZ> results(new (std::nothrow) SurfaceXferQZ(files.results));
  if (results == nullptr) return false;
  std::unique_ptr<IFSweep> sweep;
  try {
    sweep.reset(new (std::nothrow) IFSweep(callbacks));
    return sweep != nullptr && PlayAndCompare(*sweep, files, bands, results.get());
  } catch (const UIExceptionKernel&) {
    return false;
  }
}

bool CompareInputs(const JobFiles& files, UIDlgKernel* callbacks) {
  // A host without a part has nothing to compare, and that is no failure.
  if (!WorkingFileExists(files.part)) return true;
  if (!WorkingFileExists(files.stock)) return false;
  CompareBands bands;
  return TakeInputs(files, &bands) && RunCompare(files, bands, callbacks);
}

}  // namespace

bool SweepPartStockCompare(CString workDir, UIDlgKernel* callbacks) {
  const JobFiles files(workDir);
  RemoveStaleOutput(files.results);
  const bool compared = CompareInputs(files, callbacks);
  if (!WorkingFileExists(files.results)) return compared;
  // A copy of the part, although it goes by the name of the results, and its success is the
  // verdict: the host relies on both.
  return CopyOver(files.part, files.Copy("TmpSaveCompareResults.iff"));
}

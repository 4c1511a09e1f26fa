#include "addin/exports.h"

#include <memory>
#include <new>

#include "callbacks/UIDlgKernel.h"
#include "curves/SilhouetteBoundary.h"
#include "curves/SphericalOffset.h"
#include "curves/SpinSilhouetteBoundary.h"
#include "stock/FilterStockByColor.h"
#include "stock/HealSurface.h"
#include "stock/StockModelCompress.h"
#include "stock/SweepPartStockCompare.h"
#include "toolpaths/SweepMultipleToolpathsFromStock.h"

namespace {

/// What the stock operations with a UIDlgKernel share. `driver` is called with the callback object
/// and returns the verdict. Nothing is caught here: a driver catches what the callbacks throw.
template <typename Driver>
void RunStockOperation(const CString& workDir, HostProgress* host, bool* succeeded, Driver driver) {
  *succeeded = false;
  const std::unique_ptr<UIDlgKernel> callbacks(new (std::nothrow) UIDlgKernel);
  if (callbacks == nullptr) return;
  callbacks->SetHost(host);
  callbacks->SetWorkDir(workDir);
  *succeeded = driver(callbacks.get());
}

}  // namespace

void qztutlSweepMultipleToolpathsFromStock(CString workDir, HostProgress* host, bool* succeeded) {
  RunStockOperation(workDir, host, succeeded, [&](UIDlgKernel* callbacks) {
    return SweepMultipleToolpathsFromStock(workDir, callbacks);
  });
}

void qztutlSweepPartStockCompare(CString workDir, HostProgress* host, bool* succeeded) {
  RunStockOperation(workDir, host, succeeded, [&](UIDlgKernel* callbacks) {
    return SweepPartStockCompare(workDir, callbacks);
  });
}

void qztutlStockModelCompress(CString workDir, CString inputName, CString outputName,
                              HostProgress* host, double tolerance, bool* succeeded) {
  RunStockOperation(workDir, host, succeeded, [&](UIDlgKernel* callbacks) {
    return StockModelCompress(workDir, inputName, outputName, callbacks, tolerance);
  });
}

void qztutlFilterStockByColor(char* inputFile, char* outputFile, unsigned short colourCount,
                              unsigned char* colours, bool* succeeded) {
  *succeeded = false;
  *succeeded = FilterStockByColor(inputFile, outputFile, colourCount, colours);
}

void qztutl_heal(double tolerance, char* inputFile, char* outputFile, bool* succeeded) {
  HealSurface(tolerance, inputFile, outputFile, succeeded);
}

void qztutl_silbndy(char* inputFile, char* outputFile, double distance, double* boxMin,
                    double* boxMax, unsigned char* result) {
  SilhouetteBoundary(inputFile, outputFile, distance, boxMin, boxMax, result);
}

void qztutlSpinSilBndy(const char* inputFile, int mode, const char* outputFile, double distance,
                       double* boxMin, double* boxMax, unsigned char* result) {
  SpinSilhouetteBoundary(inputFile, mode, outputFile, distance, boxMin, boxMax, result);
}

void qztutlSphericalOffsetTris(const char* inputFile, const char* outputFile, double distance,
                               double unscaledValue, double* boxMin, double* boxMax,
                               unsigned char* result) {
  SphericalOffset(inputFile, outputFile, distance, unscaledValue, boxMin, boxMax, result);
}

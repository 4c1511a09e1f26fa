#include "stock/HealSurface.h"

#include <memory>
#include <new>

#include "callbacks/RunFlags.h"
#include "callbacks/UIDialogQZC.h"
#include "callbacks/UIExceptionQZC.h"
#include "platform/IFHeal.h"

void HealSurface(double tolerance, char* inputFile, char* outputFile, bool* succeeded) {
  *succeeded = false;
  UIDialogQZC callbacks;
  ResetAbortState();
  // Freed behind everything else, the verdict included.
  std::unique_ptr<IFHeal> heal;
  try {
    heal.reset(new (std::nothrow) IFHeal(&callbacks));
    if (heal != nullptr) heal->Run(tolerance, inputFile, outputFile);
    // Also when there was no memory for a kernel object: only a stop and a kernel error are
    // failures.
    *succeeded = true;
  } catch (const UIExceptionQZC&) {
    // The user's stop, or a kernel error.
  }
}

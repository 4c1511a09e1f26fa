#include "stock/FilterStockByColor.h"

#include <memory>
#include <new>

#include "callbacks/UIExceptionQZC.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"

namespace {

constexpr short kChosenColours = 1;  // LoadBinarySurface's mode

}  // namespace

bool FilterStockByColor(const char* inputFile, const char* outputFile, unsigned short colourCount,
                        const unsigned char* colours) {
  const std::unique_ptr<SurfaceXferQZ> output(new (std::nothrow) SurfaceXferQZ(outputFile));
  if (output == nullptr) return false;
  try {
    return LoadBinarySurface(inputFile, output.get(), kChosenColours, colourCount, colours);
  } catch (const UIExceptionQZC&) {
    return false;
  }
}

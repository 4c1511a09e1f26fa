#pragma once

#include "platform/Export.h"

#ifndef IFSWEEP_API
#define IFSWEEP_API QZ_IMPORT
#endif

class UIDialog;
struct SurfaceTransfer;

/// Geometry kernel: sweeps toolpaths through a stock, compares a part with a stock.
/// Nothing is returned: a failure reaches the caller only as an exception that the callback object
/// throws. Callbacks come on the calling thread only.
class IFSWEEP_API IFSweep {
 public:
  /// `callbacks` stays the caller's and must outlive this object.
  explicit IFSweep(UIDialog* callbacks);
  IFSweep(const IFSweep&) = delete;
  IFSweep& operator=(const IFSweep&) = delete;
  ~IFSweep();

  /// The channel that takes the input stock. Owned by this object. Its handles are its own; it
  /// copies what it is given.
  SurfaceTransfer* OpenStockChannel();

  /// A channel for Compare: the first opened takes the part, the second the stock.
  SurfaceTransfer* OpenCompareSurfaceChannel();

  void SetFiveAxisBufferingLevel(int level);

  /// Sweeps the paths of the interchange file `pathFile` (full path) through the stock and gives
  /// the result to `output`, from Reset to Close.
  void Run(SurfaceTransfer* output, char* pathFile);

  /// Plays the part's surface into `results`, coloured by its distance from the stock.
  /// `colours` and `distances` hold `divisions` entries each; distances in the host's unit.
  void Compare(SurfaceTransfer* part, SurfaceTransfer* stock, unsigned int stockColour,
               int divisions, unsigned int* colours, double* distances, SurfaceTransfer* results);

 private:
  struct Impl;
  Impl* m_impl;
};

#pragma once

#include "platform/Export.h"

#ifndef IFSPINSIL_API
#define IFSPINSIL_API QZ_IMPORT
#endif

class UIDialog;
struct CurveTransfer;
struct SurfaceTransfer;

/// Geometry kernel: the outline of what a surface covers when it is spun about the X axis.
/// Nothing is returned: a failure reaches the caller only as an exception that the callback object
/// throws. Callbacks come on the calling thread only.
class IFSPINSIL_API IFSpinsil {
 public:
  /// `dialog` stays the caller's and must outlive this object.
  explicit IFSpinsil(UIDialog* dialog);
  IFSpinsil(const IFSpinsil&) = delete;
  IFSpinsil& operator=(const IFSpinsil&) = delete;
  ~IFSpinsil();

  /// The channel that takes the surface. Owned by this object. Its handles are its own; it copies
  /// what it is given.
  SurfaceTransfer* OpenInputChannel();

  /// Gives the outline of the surface received to `output`, from Reset to Close. `distance` in the
  /// host's unit.
  void Run(CurveTransfer* output, double distance);

 private:
  struct Impl;
  Impl* m_impl;
};

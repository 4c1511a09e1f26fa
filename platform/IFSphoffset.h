#pragma once

#include "platform/Export.h"

#ifndef IFSPHOFFSET_API
#define IFSPHOFFSET_API QZ_IMPORT
#endif

class UIDialog;
struct SurfaceTransfer;

/// Geometry kernel: a surface grown or shrunk by a ball.
/// Nothing is returned: a failure reaches the caller only as an exception that the callback object
/// throws. Callbacks come on the calling thread only.
class IFSPHOFFSET_API IFSphoffset {
 public:
  /// `dialog` stays the caller's and must outlive this object.
  explicit IFSphoffset(UIDialog* dialog);
  IFSphoffset(const IFSphoffset&) = delete;
  IFSphoffset& operator=(const IFSphoffset&) = delete;
  ~IFSphoffset();

  /// The channel that takes the surface. Owned by this object. Its handles are its own; it copies
  /// what it is given.
  SurfaceTransfer* OpenInputChannel();

  /// Gives the offset of the surface received to `output`, from Reset to Close. `distance` in the
  /// host's unit; `unscaledValue`, in front of it, is no length and stays as it is when lengths are
  /// scaled.
  void Run(double unscaledValue, double distance, SurfaceTransfer* output);

 private:
  struct Impl;
  Impl* m_impl;
};

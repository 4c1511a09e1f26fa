#pragma once

#include "platform/Export.h"

#ifndef IFSILHOUETTE_API
#define IFSILHOUETTE_API QZ_IMPORT
#endif

class UIDialog;

/// Geometry kernel: the outline of a surface's shadow along Z.
/// Nothing is returned: a failure reaches the caller only as an exception that the callback object
/// throws. Callbacks come on the calling thread only.
class IFSILHOUETTE_API IFSilhouette {
 public:
  IFSilhouette();
  IFSilhouette(const IFSilhouette&) = delete;
  IFSilhouette& operator=(const IFSilhouette&) = delete;
  ~IFSilhouette();

  /// Reads a binary surface file and writes a file of curves in the tree variant. `distance` in the
  /// host's unit. `dialog` stays the caller's and is used only during the call.
  void Run(char* inputFile, char* outputFile, double distance, UIDialog* dialog);

 private:
  struct Impl;
  Impl* m_impl;
};

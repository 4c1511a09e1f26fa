#pragma once

#include "platform/Export.h"

#ifndef IFHEAL_API
#define IFHEAL_API QZ_IMPORT
#endif

class UIDialog;

/// Geometry kernel: closes gaps in a surface and mends its facets.
/// Nothing is returned: a failure reaches the caller only as an exception that the callback object
/// throws. Callbacks come on the calling thread only.
class IFHEAL_API IFHeal {
 public:
  /// `callbacks` stays the caller's and must outlive this object.
  explicit IFHeal(UIDialog* callbacks);
  IFHeal(const IFHeal&) = delete;
  IFHeal& operator=(const IFHeal&) = delete;
  ~IFHeal();

  /// Reads one binary surface file and writes another (full paths). `tolerance` in the host's unit:
  /// how far apart the two sides of a gap may lie to be joined. A run that does not end, for
  /// whatever reason, leaves an older output file as it was.
  void Run(double tolerance, char* inputFile, char* outputFile);

 private:
  struct Impl;
  Impl* m_impl;
};

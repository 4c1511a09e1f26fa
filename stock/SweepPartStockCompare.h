#pragma once

#include "MfcApi.h"

class UIDlgKernel;

/// Has the kernel colour the facets of "PartFileToCompare.iff" by their distance from
/// "StockModelOutput.tmp", in the bands of "TmpCompareInfo.tmp", all in `workDir` (with its
/// trailing backslash), and leaves "CompareResults.iff" there. An old one is removed first.
///
/// True when there is no part, and nothing is done then. Otherwise false when the comparison did
/// not get as far as creating its result: no stock, no or unusable bands, no memory. From there on
/// the result file exists, and the verdict is whether the last diagnostic copy could be made,
/// whatever the kernel said; a comparison that failed leaves a file of nothing but its header.
/// What is thrown and is not UIExceptionKernel passes on, with everything freed and no last copy.
/// `callbacks` is the caller's and not null.
bool SweepPartStockCompare(CString workDir, UIDlgKernel* callbacks);

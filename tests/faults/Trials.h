#pragma once

#include <memory>

#include "faults/Trial.h"

namespace faults {

/// A fresh job for each of the exports. One lives at a time.
std::unique_ptr<Trial> MakeSweepTrial();
std::unique_ptr<Trial> MakeCompareTrial();
/// The same with a host that writes the status of an open only when that fails.
std::unique_ptr<Trial> MakeCompareTrialOfAQuietHost();
std::unique_ptr<Trial> MakeCompressTrial();
std::unique_ptr<Trial> MakeFilterTrial();
std::unique_ptr<Trial> MakeHealTrial();
/// Those that run near the origin, with so small a distance that everything is moved and scaled.
std::unique_ptr<Trial> MakeSilhouetteTrial();
std::unique_ptr<Trial> MakeSpinTrial();
std::unique_ptr<Trial> MakeOffsetTrial();

}  // namespace faults

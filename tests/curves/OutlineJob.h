#pragma once

#include <array>
#include <functional>
#include <string>

#include "support/CurveFile.h"
#include "support/JobFiles.h"
#include "support/JobTest.h"
#include "support/ScriptedKernel.h"

/// The three operations that run near the origin, by what tells them apart.
enum class Operation { kSilhouette, kSpin, kSpinTree, kOffset };

/// A job for any of them: an input "in.iff" of one facet, and a kernel that answers with a square
/// of curves or with one facet. The host's temporary directory is the job's; its unit is the inch.
/// The box lies near the origin and nothing needs scaling.
class OutlineJob : public support::JobTest {
 protected:
  using Triple = std::array<double, 3>;

  OutlineJob();
  ~OutlineJob() override;

  /// Through the runner alone, and with the shift around it.
  unsigned char Run(Operation operation);
  void Call(Operation operation);

  void PutInput(const support::Surface& surface);
  std::string InputBytes() const { return support::ReadWholeFile(InJob("in.iff")); }
  std::string OutputBytes() const { return support::ReadWholeFile(InJob("out.tmp")); }

  /// The output of an operation that went well, as the kernel gave it.
  std::string Answer(Operation operation) const;
  /// What is there before the kernel has given anything, or when it gives up.
  std::string Unfinished(Operation operation) const;

  /// The call inside which the kernel works.
  static std::string RunCall(Operation operation);

  support::ScriptedKernel kernel;
  std::string input = std::string(WorkDir().GetString()) + "in.iff";
  std::string output = std::string(WorkDir().GetString()) + "out.tmp";
  double distance = 0.25;
  double unscaledValue = 12.5;
  Triple boxMin = {0, 0, 0};
  Triple boxMax = {10, 10, 10};
  unsigned char result = 77;

 private:
  double m_tolerance;
};

/// Every point moved, and moved back, as the operations do it.
using Points = std::vector<std::array<double, 3>>;
Points Moved(Points points, const std::array<double, 3>& c, double s);
Points MovedBack(Points points, const std::array<double, 3>& c, double s);

std::string NameOf(Operation operation);

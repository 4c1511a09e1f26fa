#pragma once

#include <array>
#include <functional>
#include <string>

#include "faults/StatusBarModel.h"

namespace faults {

using Triple = std::array<double, 3>;

/// The job of the operations that run near the origin, in inches: a box of ten inches on the
/// origin, which would stay where it is, were the distance not so small that it is scaled.
inline constexpr std::array<double, 6> kBox = {0, 0, 0, 10, 10, 10};
inline constexpr double kDistance = 0.00002;
inline constexpr const char* kInput = "job\\in.iff";
inline constexpr const char* kOutput = "job\\out.tmp";
inline constexpr std::size_t kSurfaceHeaderSize = 14;

/// What the three operations near the origin have in common.
class OutlineModel : public StatusBarModel {
 public:
  using StatusBarModel::StatusBarModel;

 protected:
  void Act() override;

  virtual Triple Centre() const { return {10 * 0.5 + 5 * 0.04, 10 * 0.5 + 0.04, 10 * 0.5}; }
  /// Of the output.
  virtual std::size_t HeaderSize() const = 0;
  /// The kernel's run; returns the flag.
  virtual int RunKernel() = 0;

  /// With a kernel whose input channel is loaded first. `kernel` is its class; run() follows the
  /// loading.
  int RunOnLoaded(const std::string& kernel, const std::function<void()>& run);

 private:
  using Change = std::function<double(double coordinate, std::size_t axis)>;
  void Rewrite(const std::string& file, std::size_t headerSize, const Change& change);
  bool RewritePoints(const std::string& file, std::size_t headerSize, const Change& change);
};

}  // namespace faults

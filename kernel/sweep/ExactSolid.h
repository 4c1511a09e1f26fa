#pragma once

#include <cstdint>
#include <memory>

#include "kernel/sweep/LocalSolid.h"

namespace kernel {

// The exact solid whose surface a mesh is to have, in blocks near that surface. May be asked on
// several threads.
class ExactSolid {
 public:
  ExactSolid() = default;
  ExactSolid(const ExactSolid&) = delete;
  ExactSolid& operator=(const ExactSolid&) = delete;
  virtual ~ExactSolid() = default;

  static constexpr std::uint32_t kNone = UINT32_MAX;

  virtual const SurfaceMakers& Makers() const = 0;
  virtual std::size_t BlockCount() const = 0;
  // kNone far from the surface.
  virtual std::uint32_t BlockAt(const Vec3& point) const = 0;
  virtual std::unique_ptr<SolidInBlock> InBlock(std::uint32_t block) const = 0;
};

}  // namespace kernel

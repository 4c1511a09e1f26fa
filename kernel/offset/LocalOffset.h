#pragma once

#include "kernel/offset/OffsetMakers.h"

namespace kernel {

// What a field leaves, as a solid on which points are settled. The field is the same everywhere;
// the facet that was nearest last is where the next search begins, so one thread uses it at a time.
class LocalOffset final : public LocalSolid {
 public:
  explicit LocalOffset(const OffsetMakers& makers) : m_makers(makers) {}

  const SurfaceMakers& Makers() const override { return m_makers; }

  OffSurface HowFarOff(const Vec3& point) const override {
    const OffsetField::Off off = m_makers.Field().At(point, m_guess);
    m_guess = off.slot;
    return {off.distance, Generator::Move(off.slot)};
  }

  void PlanesAt(const Vec3&, double, std::vector<Generator>&) const override {}

  bool HasColourNear(const Vec3& point, std::uint8_t colour, double) const override {
    return m_makers.ColourOf(HowFarOff(point).maker) == colour;
  }

 private:
  const OffsetMakers& m_makers;
  mutable std::uint32_t m_guess = 0;
};

}  // namespace kernel

#include "kernel/offset/OffsetSolid.h"

namespace kernel {
namespace {

// The field is the same everywhere; the facet that was nearest last is where the next search
// begins.
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

  // A facet always takes the colour of what it lies on: the nearest one's.
  bool HasColourNear(const Vec3&, std::uint8_t, double) const override { return false; }

 private:
  const OffsetMakers& m_makers;
  mutable std::uint32_t m_guess = 0;
};

class OffsetInBlock final : public SolidInBlock {
 public:
  explicit OffsetInBlock(const OffsetMakers& makers) : m_solid(makers) {}

  const LocalSolid& Whole() override { return m_solid; }
  const LocalSolid& At(const Vec3&) override { return m_solid; }

 private:
  LocalOffset m_solid;
};

}  // namespace

std::unique_ptr<SolidInBlock> OffsetSolid::InBlock(std::uint32_t /*block*/) const {
  return std::make_unique<OffsetInBlock>(m_makers);
}

}  // namespace kernel

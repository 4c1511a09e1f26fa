#pragma once

#include "kernel/offset/OffsetField.h"
#include "kernel/sweep/StockMesh.h"

namespace kernel {

// The bodies of a field as makers of surface; a maker's number is its facet's slot. Keeps
// references to both arguments.
class OffsetMakers final : public SurfaceMakers {
 public:
  OffsetMakers(const OffsetField& field, const StockMesh& mesh) : m_field(field), m_mesh(mesh) {}

  const OffsetField& Field() const { return m_field; }
  const StockMesh& Mesh() const { return m_mesh; }

  std::uint8_t ColourOf(Generator maker) const override {
    return m_mesh.facets[m_field.FacetOf(maker.Number())].colour;
  }
  TangentPlane TangentAt(Generator maker, const Vec3& point) const override {
    return TangentNearest(maker, point);
  }
  TangentPlane TangentNearest(Generator maker, const Vec3& point) const override {
    return m_field.From(maker.Number(), point).plane;
  }

 private:
  const OffsetField& m_field;
  const StockMesh& m_mesh;
};

}  // namespace kernel

#include "kernel/spin/FoldedFacet.h"

namespace kernel {
namespace {

std::size_t Next(std::size_t i) { return (i + 1) % 3; }
std::size_t Last(std::size_t i) { return (i + 2) % 3; }

}  // namespace

FoldedFacet::FoldedFacet(const std::array<Vec3, 3>& corners)
    : m_normal(Cross(corners[1] - corners[0], corners[2] - corners[0])) {
  for (std::size_t i = 0; i < 3; ++i) {
    m_sense[i] = corners[i].y * m_normal.z - corners[i].z * m_normal.y;
  }
}

int FoldedFacet::SenseAtStart(std::size_t side) const {
  if (Sign(side) != 0) return Sign(side);
  return Sign(Next(side)) != 0 ? Sign(Next(side)) : Sign(Last(side));
}

int FoldedFacet::SenseAtEnd(std::size_t side) const {
  return Sign(Next(side)) != 0 ? Sign(Next(side)) : SenseAtStart(side);
}

std::optional<FoldedFacet::Fold> FoldedFacet::FoldAcross() const {
  std::optional<BorderPlace> entry, exit;  // of the part that keeps its sense, around the border
  for (std::size_t i = 0; i < 3; ++i) {
    const bool onSide = Sign(i) != 0;
    const int before = onSide ? Sign(i) : Sign(Last(i)), behind = Sign(Next(i));
    if (before * behind >= 0) continue;
    (behind > 0 ? entry : exit) = BorderPlace{i, onSide};
  }
  if (!entry || !exit) return std::nullopt;
  return Fold{*exit, *entry};
}

}  // namespace kernel

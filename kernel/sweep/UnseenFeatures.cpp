#include "kernel/sweep/UnseenFeatures.h"

namespace kernel {
namespace {

class Family {
 public:
  Family(const DexelModel& model, const SurfaceCells& cells, int axis, double least)
      : m_model(model), m_cells(cells), m_axis(axis), m_least(least) {}

  std::size_t Count() const {
    std::size_t count = 0;
    const DexelLattice& lattice = m_model.Lattice();
    for (int j = 0; j < lattice.Nodes((m_axis + 2) % 3); ++j) {
      for (int i = 0; i < lattice.Nodes((m_axis + 1) % 3); ++i) {
        const DexelRay& ray = m_model.Ray(m_axis, i, j);
        for (std::size_t s = 0; s < ray.size(); ++s) {
          if (IsUnseen(i, j, ray[s].low, ray[s].high)) ++count;
          if (s > 0 && IsUnseen(i, j, ray[s - 1].high, ray[s].low)) ++count;
        }
      }
    }
    return count;
  }

 private:
  bool IsUnseen(int i, int j, double low, double high) const {
    if (high - low <= m_least) return false;
    const int node = m_model.Lattice().FirstNodeFrom(m_axis, low);
    if (node != m_model.Lattice().FirstNodeFrom(m_axis, high)) return false;
    for (int side = 0; side < 4; ++side) {
      std::array<int, 3> cell{};
      cell[static_cast<std::size_t>(m_axis)] = node - 1;
      cell[static_cast<std::size_t>((m_axis + 1) % 3)] = i - (side & 1);
      cell[static_cast<std::size_t>((m_axis + 2) % 3)] = j - (side >> 1);
      if (m_cells.HasSurface(cell[0], cell[1], cell[2])) return false;
    }
    return true;
  }

  const DexelModel& m_model;
  const SurfaceCells& m_cells;
  int m_axis;
  double m_least;
};

}  // namespace

std::size_t CountUnseenFeatures(const DexelModel& model, const SurfaceCells& cells, double least) {
  std::size_t count = 0;
  for (int axis = 0; axis < 3; ++axis) count += Family(model, cells, axis, least).Count();
  return count;
}

}  // namespace kernel

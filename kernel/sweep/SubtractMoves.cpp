#include "kernel/sweep/SubtractMoves.h"

#include <algorithm>
#include <atomic>
#include <limits>

#include "kernel/common/Workers.h"
#include "kernel/sweep/MoveBoxes.h"
#include "kernel/sweep/SubtractFromRay.h"

namespace kernel {
namespace {

// Rays on a tile's side: small enough for the cache, large enough that a move meets few tiles.
constexpr int kTile = 32;
// Moves are binned in batches, so that the bins stay small however long the program is.
constexpr std::size_t kBatch = 1 << 16;

// The half-open ranges of a family's rays.
struct RayRange {
  int beginU = 0, endU = 0, beginV = 0, endV = 0;
};

RayRange Overlap(const RayRange& a, const RayRange& b) {
  return {std::max(a.beginU, b.beginU), std::min(a.endU, b.endU), std::max(a.beginV, b.beginV),
          std::min(a.endV, b.endV)};
}

class Family {
 public:
  Family(DexelModel& model, int axis)
      : m_lattice(model.Lattice()),
        m_rays(model.Rays(axis)),
        m_sliver(model.Sliver()),
        m_axis(axis),
        m_u((axis + 1) % 3),
        m_v((axis + 2) % 3),
        m_tilesU((m_lattice.Nodes(m_u) + kTile - 1) / kTile),
        m_tilesV((m_lattice.Nodes(m_v) + kTile - 1) / kTile) {}

  std::size_t TileCount() const {
    return static_cast<std::size_t>(m_tilesU) * static_cast<std::size_t>(m_tilesV);
  }

  // Sorts the batch's moves into tiles, in program order within each.
  void Bin(std::size_t firstMove, const std::vector<Box3>& boxes) {
    m_begin.assign(TileCount() + 1, 0);
    ForEachTile(boxes, [&](std::size_t tile, std::size_t) { ++m_begin[tile + 1]; });
    for (std::size_t tile = 0; tile < TileCount(); ++tile) m_begin[tile + 1] += m_begin[tile];
    m_moves.resize(m_begin.back());
    std::vector<std::size_t> next(m_begin.begin(), m_begin.end() - 1);
    ForEachTile(boxes, [&](std::size_t tile, std::size_t i) {
      m_moves[next[tile]++] = static_cast<std::uint32_t>(firstMove + i);
    });
  }

  std::size_t Work(std::size_t tile) const { return m_begin[tile + 1] - m_begin[tile]; }

  bool Cut(std::size_t tile, const PathMoves& moves, std::size_t firstMove,
           const std::vector<Box3>& boxes) {
    const int tileU = static_cast<int>(tile % static_cast<std::size_t>(m_tilesU));
    const int tileV = static_cast<int>(tile / static_cast<std::size_t>(m_tilesU));
    const RayRange own = {tileU * kTile, (tileU + 1) * kTile, tileV * kTile, (tileV + 1) * kTile};
    bool removed = false;
    for (std::size_t i = m_begin[tile]; i < m_begin[tile + 1]; ++i) {
      const std::uint32_t move = m_moves[i];
      const Box3& box = boxes[move - firstMove];
      if (CutMove(moves.Swept(move), Generator::Move(move), box, Overlap(own, Range(box)))) {
        removed = true;
      }
    }
    return removed;
  }

 private:
  RayRange Range(const Box3& box) const {
    if (box.IsEmpty()) return {};
    const auto end = [&](int axis) {
      return std::min(m_lattice.FirstNodeFrom(axis, box.high[axis]) + 1, m_lattice.Nodes(axis));
    };
    return {m_lattice.FirstNodeFrom(m_u, box.low[m_u]), end(m_u),
            m_lattice.FirstNodeFrom(m_v, box.low[m_v]), end(m_v)};
  }

  template <class Visit>
  void ForEachTile(const std::vector<Box3>& boxes, const Visit& visit) const {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      const RayRange range = Range(boxes[i]);
      if (range.endU <= range.beginU || range.endV <= range.beginV) continue;
      for (int v = range.beginV / kTile; v <= (range.endV - 1) / kTile; ++v) {
        for (int u = range.beginU / kTile; u <= (range.endU - 1) / kTile; ++u) {
          visit(static_cast<std::size_t>(v) * static_cast<std::size_t>(m_tilesU) +
                    static_cast<std::size_t>(u),
                i);
        }
      }
    }
  }

  bool CutMove(const SweptTool& swept, Generator maker, const Box3& box, const RayRange& range) {
    bool removed = false;
    Vec3 origin;
    for (int v = range.beginV; v < range.endV; ++v) {
      origin[m_v] = m_lattice.Coordinate(m_v, v);
      for (int u = range.beginU; u < range.endU; ++u) {
        DexelRay& ray = m_rays[m_lattice.RayIndex(m_axis, u, v)];
        if (ray.empty() || ray.back().high < box.low[m_axis] ||
            ray.front().low > box.high[m_axis]) {
          continue;
        }
        origin[m_u] = m_lattice.Coordinate(m_u, u);
        RayInterval inside;
        if (!swept.Intersect(m_axis, origin, inside)) continue;
        if (SubtractFromRay(ray, inside.enter, inside.leave, maker, m_sliver)) removed = true;
      }
    }
    return removed;
  }

  const DexelLattice& m_lattice;
  std::vector<DexelRay>& m_rays;
  double m_sliver;
  int m_axis, m_u, m_v;
  int m_tilesU, m_tilesV;
  std::vector<std::size_t> m_begin;
  std::vector<std::uint32_t> m_moves;
};

struct TileTask {
  std::size_t family, tile, work;
};

// The longest first, so that the last threads do not wait for one.
std::vector<TileTask> TasksOf(const std::array<Family, 3>& families) {
  std::vector<TileTask> tasks;
  for (std::size_t f = 0; f < 3; ++f) {
    for (std::size_t tile = 0; tile < families[f].TileCount(); ++tile) {
      if (families[f].Work(tile) > 0) tasks.push_back({f, tile, families[f].Work(tile)});
    }
  }
  std::stable_sort(tasks.begin(), tasks.end(),
                   [](const TileTask& a, const TileTask& b) { return a.work > b.work; });
  return tasks;
}

}  // namespace

bool SubtractMoves(const PathMoves& moves, const Box3& box, DexelModel& model, Reporter& reporter) {
  std::array<Family, 3> families = {Family(model, 0), Family(model, 1), Family(model, 2)};
  std::atomic<bool> removed{false};
  for (std::size_t first = 0; first < moves.Count(); first += kBatch) {
    const std::size_t count = std::min(kBatch, moves.Count() - first);
    const std::vector<Box3> boxes = BoxesWithin(moves, first, count, box);
    for (Family& family : families) family.Bin(first, boxes);
    const std::vector<TileTask> tasks = TasksOf(families);
    RunTasks(
        tasks.size(),
        [&](std::size_t i) {
          if (families[tasks[i].family].Cut(tasks[i].tile, moves, first, boxes)) removed = true;
        },
        [&](std::size_t done) {
          const double share = static_cast<double>(done) / static_cast<double>(tasks.size());
          reporter.Advance(static_cast<double>(first) + share * static_cast<double>(count),
                           static_cast<double>(moves.Count()));
        });
  }
  return removed;
}

}  // namespace kernel

#include "kernel/outline/UniteEdges.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "kernel/common/FatalError.h"
#include "kernel/common/Workers.h"
#include "kernel/outline/BoundaryEdges.h"
#include "kernel/outline/SnapEdges.h"

namespace kernel {
namespace {

constexpr int kMostRounds = 40;

// Ends a task after `tell` has thrown, whose exception is the one that the caller sees.
struct Stopped {};

class GroupUniter {
 public:
  GroupUniter(std::size_t count, const Tell& tell) : m_parts(count), m_tell(tell) {
    for (std::size_t left = count; left > 0; left = left > 1 ? (left + 1) / 2 : 0) m_steps += left;
  }

  void MakeParts(const std::function<std::vector<PlaneEdge>(std::size_t)>& group) {
    RunStep(m_parts.size(), [&](std::size_t i) { m_parts[i] = Unite(group(i)); });
  }

  std::vector<PlaneEdge> UniteAll() {
    while (m_parts.size() > 1) {
      std::vector<std::vector<PlaneEdge>> wider((m_parts.size() + 1) / 2);
      RunStep(wider.size(), [&](std::size_t i) { wider[i] = UnitePair(2 * i); });
      m_parts.swap(wider);
    }
    return std::move(m_parts[0]);
  }

 private:
  std::vector<PlaneEdge> UnitePair(std::size_t first) {
    std::vector<PlaneEdge> edges = std::move(m_parts[first]);
    if (first + 1 == m_parts.size()) return edges;
    std::vector<PlaneEdge>& others = m_parts[first + 1];
    edges.insert(edges.end(), others.begin(), others.end());
    others = {};
    return Unite(std::move(edges));
  }

  std::vector<PlaneEdge> Unite(std::vector<PlaneEdge> edges) const {
    return UniteEdges(std::move(edges), [this] {
      if (m_stopped) throw Stopped();
    });
  }

  void RunStep(std::size_t count, const std::function<void(std::size_t)>& task) {
    RunTasks(count, task, [&](std::size_t finished) {
      try {
        m_tell(static_cast<double>(m_done + finished) / static_cast<double>(m_steps));
      } catch (...) {
        m_stopped = true;
        throw;
      }
    });
    m_done += count;
  }

  std::vector<std::vector<PlaneEdge>> m_parts;
  const Tell& m_tell;
  std::size_t m_steps = 0, m_done = 0;
  std::atomic<bool> m_stopped{false};
};

}  // namespace

std::vector<PlaneEdge> UniteEdges(std::vector<PlaneEdge> edges, const std::function<void()>& tell) {
  JoinEqualEdges(edges, tell);
  for (int round = 0; round <= kMostRounds; ++round) {
    if (auto boundary = BoundaryEdges(edges, tell)) return std::move(*boundary);
    SnapEdges(edges, tell);
  }
  throw FatalError("the outline's edges cannot be parted");
}

std::vector<PlaneEdge> UniteGroups(std::size_t count,
                                   const std::function<std::vector<PlaneEdge>(std::size_t)>& group,
                                   const Tell& tell) {
  if (count == 0) return {};
  GroupUniter uniter(count, tell);
  uniter.MakeParts(group);
  return uniter.UniteAll();
}

}  // namespace kernel

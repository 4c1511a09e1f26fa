#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/ToolpathRecords.h"
#include "kernel/sweep/SweptTool.h"

namespace kernel {

// What all moves of one path share.
struct SweepPath {
  ConvexTool tool;
  Vec3 axis;  // unit, from the tip up the shank
  std::uint8_t colour = 0;
  double sweepTolerance = 0;  // 0: the stock decides
  double compressTolerance = 0;
  std::uint32_t firstMove = 0;
};

// All moves of a job in program order, numbered from 0, in the stock's frame.
class PathMoves {
 public:
  // Takes over the paths in order. Throws FatalError, naming path, cut and position (counted from
  // 1), for what cannot be swept: numbers that are not finite, a matrix further than 1e-6 from a
  // rotation, negative tolerances, a tool that is no solid, and 5-axis motion, undercut and custom
  // tools, which are not supported yet.
  explicit PathMoves(const std::vector<formats::PathRecord>& records);

  std::size_t Count() const { return m_moves.size(); }
  const std::vector<SweepPath>& Paths() const { return m_paths; }
  const SweepPath& PathOf(std::uint32_t move) const;
  SweptTool Swept(std::uint32_t move) const;

 private:
  void AddPath(const formats::PathRecord& record, const std::string& place);
  void AddCut(const formats::PathRecord& record, const formats::Cut& cut, const std::string& place);

  std::vector<SweepPath> m_paths;
  std::vector<Vec3> m_positions;
  // The first position of each move; it ends at the next one, or, with kStands, stays there.
  std::vector<std::uint32_t> m_moves;
};

}  // namespace kernel

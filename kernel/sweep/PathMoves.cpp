#include "kernel/sweep/PathMoves.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "kernel/common/FatalError.h"
#include "kernel/sweep/DexelModel.h"

namespace kernel {
namespace {

constexpr std::uint32_t kStands = 0x80000000;  // a cut of one position: the tool stands there
constexpr double kRotationTolerance = 1e-6;

[[noreturn]] void Refuse(const std::string& place, const std::string& reason) {
  throw FatalError(place + ": " + reason);
}

void CheckTolerance(double value, const char* name, const std::string& place) {
  if (!std::isfinite(value)) Refuse(place, std::string(name) + " is not finite");
  if (value < 0) Refuse(place, std::string(name) + " is negative");
}

Vec3 Column(const std::array<double, 9>& matrix, std::size_t column) {
  return {matrix[column], matrix[3 + column], matrix[6 + column]};
}

void CheckPlacement(const formats::PathRecord& record, const std::string& place) {
  for (const double value : record.matrix) {
    if (!std::isfinite(value)) Refuse(place, "matrix: a value is not finite");
  }
  for (const double value : record.origin) {
    if (!std::isfinite(value)) Refuse(place, "origin: a value is not finite");
  }
  const Vec3 x = Column(record.matrix, 0);
  const Vec3 y = Column(record.matrix, 1);
  const Vec3 z = Column(record.matrix, 2);
  const double worst = std::max({std::abs(Dot(x, x) - 1), std::abs(Dot(y, y) - 1),
                                 std::abs(Dot(z, z) - 1), std::abs(Dot(x, y)), std::abs(Dot(y, z)),
                                 std::abs(Dot(z, x)), std::abs(Dot(Cross(x, y), z) - 1)});
  if (!(worst <= kRotationTolerance)) Refuse(place, "matrix is not a rotation");
}

ConvexTool MakeTool(const formats::Tool& tool, const std::string& place) {
  const auto* convex = std::get_if<formats::ConvexTool>(&tool);
  if (convex == nullptr) {
    const bool undercut = std::holds_alternative<formats::UndercutTool>(tool);
    Refuse(place, undercut ? "undercut tools (tool type 2) are not supported yet"
                           : "custom tools (tool type 3) are not supported yet");
  }
  std::variant<ConvexTool, std::string> made = ConvexTool::Make(*convex);
  if (const auto* reason = std::get_if<std::string>(&made)) Refuse(place, *reason);
  return std::get<ConvexTool>(std::move(made));
}

std::string Numbered(const char* what, std::size_t index) {
  return std::string(what) + " " + std::to_string(index + 1);
}

}  // namespace

PathMoves::PathMoves(const std::vector<formats::PathRecord>& records) {
  for (std::size_t i = 0; i < records.size(); ++i) AddPath(records[i], Numbered("path", i));
}

const SweepPath& PathMoves::PathOf(std::uint32_t move) const {
  const auto after = std::upper_bound(
      m_paths.begin(), m_paths.end(), move,
      [](std::uint32_t number, const SweepPath& path) { return number < path.firstMove; });
  return *(after - 1);
}

SweptTool PathMoves::Swept(std::uint32_t move) const {
  const SweepPath& path = PathOf(move);
  const std::uint32_t start = m_moves[move] & ~kStands;
  const std::uint32_t end = (m_moves[move] & kStands) != 0 ? start : start + 1;
  return SweptTool(path.tool, path.axis, m_positions[start], m_positions[end]);
}

void PathMoves::AddPath(const formats::PathRecord& record, const std::string& place) {
  CheckTolerance(record.sweepToler, "sweepToler", place);
  CheckTolerance(record.pathToler, "pathToler", place);
  CheckTolerance(record.compressToler, "compressToler", place);
  CheckPlacement(record, place);
  if (record.pathType != 1) Refuse(place, "5-axis motion (pathType 2) is not supported yet");
  m_paths.push_back({MakeTool(record.tool, place), Normalised(Column(record.matrix, 2)),
                     static_cast<std::uint8_t>(record.colour), record.sweepToler,
                     record.compressToler, static_cast<std::uint32_t>(m_moves.size())});
  for (std::size_t i = 0; i < record.cuts.size(); ++i) {
    AddCut(record, record.cuts[i], place + ", " + Numbered("cut", i));
  }
}

void PathMoves::AddCut(const formats::PathRecord& record, const formats::Cut& cut,
                       const std::string& place) {
  const auto& m = record.matrix;
  const auto& o = record.origin;
  const std::size_t count = cut.coordinates.size() / 3;
  if (m_positions.size() + count > Generator::kMostNumber)
    throw FatalError("Memory limit reached.");
  for (std::size_t i = 0; i < count; ++i) {
    const double* p = &cut.coordinates[3 * i];
    const Vec3 tip = {m[0] * p[0] + m[1] * p[1] + m[2] * p[2] + o[0],
                      m[3] * p[0] + m[4] * p[1] + m[5] * p[2] + o[1],
                      m[6] * p[0] + m[7] * p[1] + m[8] * p[2] + o[2]};
    if (!IsFinite(tip)) Refuse(place + ", " + Numbered("position", i), "not finite");
    const auto start = static_cast<std::uint32_t>(m_positions.size());
    if (count == 1) m_moves.push_back(start | kStands);
    if (i + 1 < count) m_moves.push_back(start);
    m_positions.push_back(tip);
  }
}

}  // namespace kernel

#include "formats/programs/ProgramPaths.h"

#include <algorithm>
#include <utility>

#include "formats/programs/GCodeError.h"

namespace formats {

ProgramPaths::ProgramPaths(const ToolTable& tools, const PathSettings& settings, Take take)
    : tools_(tools), settings_(settings), take_(std::move(take)) {}

void ProgramPaths::LoadTool(std::int32_t number) {
  if (number == 0) {
    Load(number, {});
    return;
  }
  const auto found = tools_.find(number);
  if (found == tools_.end()) {
    throw GCodeError("tool " + std::to_string(number) + " is not in the tool table", 0);
  }
  Load(number, found->second);
}

void ProgramPaths::LoadTool(std::int32_t number, const TableTool& tool) {
  const auto found = tools_.find(number);
  Load(number, found == tools_.end() ? tool : found->second);
}

void ProgramPaths::Load(std::int32_t number, const TableTool& tool) {
  EndPath();
  ++load_;
  toolNumber_ = number;
  tool_ = tool;
}

void ProgramPaths::Start(const ToolTip& tip, Motion motion) {
  EndPath();
  rapid_ = IsRapidPath(motion);
  Append(tip);
}

void ProgramPaths::MoveTo(const ToolTip& tip, Motion motion) {
  if (IsRapidPath(motion) != rapid_) {
    const ToolTip last = {positions_[positions_.size() - 3], positions_[positions_.size() - 2],
                          positions_[positions_.size() - 1]};
    const ToolAxis lastAxis = axes_.empty() ? kVerticalAxis : axes_.back();
    // A tool that only stood before it went on has cut nothing that the next path does not cut.
    if (positions_.size() == 3) {
      positions_.clear();
      axes_.clear();
    }
    EndPath();
    rapid_ = !rapid_;
    const ToolAxis next = std::exchange(axis_, lastAxis);
    Append(last);
    axis_ = next;
  }
  Append(tip);
}

void ProgramPaths::Append(const ToolTip& tip) {
  const bool tilted = !axes_.empty();
  const ToolAxis& last = tilted ? axes_.back() : kVerticalAxis;
  // A tool that stays where and as it is cuts nothing new.
  if (positions_.size() >= 3 && std::equal(tip.begin(), tip.end(), positions_.end() - 3) &&
      last == axis_) {
    return;
  }
  if (!tilted && axis_ != kVerticalAxis) {
    axes_.assign(positions_.size() / 3, kVerticalAxis);
  }
  positions_.insert(positions_.end(), tip.begin(), tip.end());
  if (tilted || axis_ != kVerticalAxis) {
    axes_.push_back(axis_);
  }
}

Cut ProgramPaths::TakeCut(bool tilted) {
  const std::vector<double> positions = std::exchange(positions_, {});
  if (!tilted) {
    return {positions};
  }
  Cut cut;
  cut.coordinates.reserve(2 * positions.size());
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    const auto tip = positions.begin() + static_cast<std::ptrdiff_t>(3 * i);
    cut.coordinates.insert(cut.coordinates.end(), tip, tip + 3);
    cut.coordinates.insert(cut.coordinates.end(), axes_[i].begin(), axes_[i].end());
  }
  axes_.clear();
  return cut;
}

void ProgramPaths::EndPath() {
  if (positions_.empty()) {
    return;
  }
  const bool tilted = !axes_.empty();
  ProgramPath path;
  path.load = load_;
  path.tool = toolNumber_;
  path.toolName = tool_.name;
  path.rapid = rapid_;
  path.record.pathType = tilted ? 2 : 1;
  path.record.colour = rapid_ ? *settings_.rapidColour : tool_.colour.value_or(settings_.colour);
  path.record.sweepToler = settings_.sweepToler;
  path.record.pathToler = settings_.pathToler;
  path.record.compressToler = settings_.compressToler;
  path.record.tool = tool_.tool;
  path.record.cuts.push_back(TakeCut(tilted));
  take_(std::move(path));
}

}  // namespace formats

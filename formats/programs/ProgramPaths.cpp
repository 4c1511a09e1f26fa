#include "formats/programs/ProgramPaths.h"

#include <algorithm>
#include <utility>

#include "formats/programs/GCodeError.h"

namespace formats {

ProgramPaths::ProgramPaths(const ToolTable& tools, const PathSettings& settings, Take take)
    : tools_(tools), settings_(settings), take_(std::move(take)) {}

void ProgramPaths::LoadTool(std::int32_t number) {
  EndPath();
  ++load_;
  toolNumber_ = number;
  tool_ = nullptr;
  if (number == 0) {
    return;
  }
  const auto found = tools_.find(number);
  if (found == tools_.end()) {
    throw GCodeError("tool " + std::to_string(number) + " is not in the tool table", 0);
  }
  tool_ = &found->second;
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
    // A tool that only stood before it went on has cut nothing that the next path does not cut.
    if (positions_.size() == 3) {
      positions_.clear();
    }
    EndPath();
    rapid_ = !rapid_;
    Append(last);
  }
  Append(tip);
}

void ProgramPaths::Append(const ToolTip& tip) {
  // A tool that stays where it is cuts nothing new.
  if (positions_.size() >= 3 && std::equal(tip.begin(), tip.end(), positions_.end() - 3)) {
    return;
  }
  positions_.insert(positions_.end(), tip.begin(), tip.end());
}

void ProgramPaths::EndPath() {
  if (positions_.empty()) {
    return;
  }
  ProgramPath path;
  path.load = load_;
  path.tool = toolNumber_;
  path.rapid = rapid_;
  path.record.colour = rapid_ ? *settings_.rapidColour : tool_->colour.value_or(settings_.colour);
  path.record.sweepToler = settings_.sweepToler;
  path.record.pathToler = settings_.pathToler;
  path.record.compressToler = settings_.compressToler;
  path.record.tool = tool_->tool;
  path.record.cuts.push_back({std::exchange(positions_, {})});
  take_(std::move(path));
}

}  // namespace formats

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/Mesh.h"
#include "formats/programs/AptReport.h"

namespace host {

enum class ProgramLanguage { kGCode, kApt };

/// Lengths in the job's units.
struct NewJobSettings {
  std::string directory;
  std::string stock;  // a mesh file, or "box:x0,y0,z0,x1,y1,z1"
  std::string program;
  ProgramLanguage language = ProgramLanguage::kGCode;
  std::string tools;   // may be empty for APT, whose programs describe their tools
  bool metric = true;  // the job's units: millimetres, otherwise inches
  int colour = 1;
  std::optional<int> rapidColour;
  double tolerance = 0;
  double pathTolerance = 0;
  double compressTolerance = 0;
  std::int32_t firstTool = 0;  // in the spindle from the start; 0: none
  bool strict = false;
  bool force = false;
};

struct NewJobPath {
  std::int64_t number = 0;
  std::int32_t tool = 0;
  std::string toolName;
  int colour = 0;
  bool rapid = false;
  std::int64_t positions = 0;
};

struct NewJobResult {
  formats::Mesh stock;
  formats::AptReport program;     // of G-code without its inserts
  std::vector<NewJobPath> paths;  // by number
  std::vector<std::string> files;
};

/// Makes the directory of a job: its stock, and one per-path file for each tool load or, where a
/// tool's moves do not hang together, for each piece of one. Everything is there afterwards or
/// nothing has changed. Throws formats::FileError with one line that says why.
NewJobResult MakeJob(const NewJobSettings& settings);

}  // namespace host

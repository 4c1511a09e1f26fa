// Any bytes as cutter-location text: an error or a run, within bounds of time and memory.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "formats/FileError.h"
#include "formats/programs/AptProgram.h"
#include "formats/programs/ProgramPaths.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream program(std::string(data, data + size));
  const formats::ToolTable none;
  formats::PathSettings settings;
  settings.rapidColour = 2;
  formats::ProgramPaths paths(none, settings, [](const formats::ProgramPath&) {});
  formats::GCodeOptions options;
  // A statement may ask for a million chords; a program of many such is only slow.
  options.arcTolerance = 1;
  try {
    formats::RunApt(program, "fuzz", options, paths);
    paths.Finish();
  } catch (const formats::FileError&) {
  }
  return 0;
}

#pragma once

// Arguments that several commands take in the same words.

#include <CLI/CLI.hpp>
#include <string>

namespace host {

inline void AddMeshInput(CLI::App& command, std::string& input) {
  command.add_option("IN", input, "The mesh: .iff, .tmp, .stl, .ply, .obj, .off")->required();
}

/// Behind AddMeshInput, whose help names the extensions.
inline void AddMeshOutput(CLI::App& command, std::string& output) {
  command.add_option("OUT", output, "The mesh to write, of these extensions")->required();
}

inline void AddCurvesOutput(CLI::App& command, std::string& output) {
  command
      .add_option("OUT", output,
                  "The drawing to write, .svg or .dxf; any other name for a binary curves file")
      ->required();
}

}  // namespace host

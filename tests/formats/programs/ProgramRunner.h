#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "formats/FileError.h"
#include "formats/programs/GCodeProgram.h"

// What a program did, call by call, in words: "tool 1", "start rapid 1 2 3", "feed 4 5 6".
class RecordedMoves : public formats::GCodeMoves {
 public:
  void LoadTool(std::int32_t number) override { calls.push_back("tool " + std::to_string(number)); }
  void Start(const formats::ToolTip& tip, formats::Motion motion) override {
    Add("start " + Name(motion), tip);
  }
  void MoveTo(const formats::ToolTip& tip, formats::Motion motion) override {
    Add(Name(motion), tip);
  }

  std::vector<std::string> calls;
  std::vector<formats::ToolTip> tips;

 private:
  static std::string Name(formats::Motion motion) {
    return motion == formats::Motion::kRapid ? "rapid" : "feed";
  }
  void Add(std::string text, const formats::ToolTip& tip) {
    for (const double coordinate : tip) {
      char number[40];
      // Adding 0 turns -0 into 0.
      std::snprintf(number, sizeof number, " %.9g", coordinate + 0.0);
      text += number;
    }
    calls.push_back(text);
    tips.push_back(tip);
  }
};

struct ProgramRun {
  RecordedMoves moves;
  formats::GCodeReport report;
};

inline ProgramRun RunProgram(const std::string& text, const formats::GCodeOptions& options = {}) {
  ProgramRun run;
  std::istringstream stream(text);
  run.report = formats::RunGCode(stream, "p.ngc", options, run.moves);
  return run;
}

inline std::vector<std::string> CallsOf(const std::string& text,
                                        const formats::GCodeOptions& options = {}) {
  return RunProgram(text, options).moves.calls;
}

// The message that the program ends with, or an empty text when it runs to its end.
inline std::string ErrorOf(const std::string& text, const formats::GCodeOptions& options = {}) {
  try {
    RunProgram(text, options);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return {};
}

using Calls = std::vector<std::string>;
